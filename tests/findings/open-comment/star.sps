* Income
TABLES /TABLE=a.
