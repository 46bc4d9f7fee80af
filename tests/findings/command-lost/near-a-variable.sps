TABLES /TABLE=age BY
list + sex.
TABLES /TABLE=sort > list.
