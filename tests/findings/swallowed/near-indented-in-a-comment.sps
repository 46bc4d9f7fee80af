TABLES /TABLE=a BY b.
* Income of the

  list of names.
