/* next */.
TABLES /TABLE=a.
