/* next
TABLES /TABLE=a.
