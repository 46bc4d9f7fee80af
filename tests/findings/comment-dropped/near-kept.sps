TABLES /TABLE=a BY b.
* Income. And age.
LIST /* all */.
BEGIN DATA.
1
END DATA. /* one
