COMPUTE x = a
+ tables
- tab.
TABLES /TABLE=a BY b.
