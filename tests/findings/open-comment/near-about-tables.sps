* The TABLES command, in which
tables are made,
 tables, more tables
  of tab1 and TABLES.
TABLES /TABLE=a BY b.
