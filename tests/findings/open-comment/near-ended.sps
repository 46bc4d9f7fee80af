* Income.
TABLES /TABLE=a.
COMMENT Age
  and sex.
TABLES /TABLE=b.
