* Income *
TABLES /TABLE=a.
