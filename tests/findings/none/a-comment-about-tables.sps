* The TABLES command makes tables
 are old, and
 tables are many.
TABLES /TABLE=a BY b.
