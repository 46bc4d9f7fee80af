LIST.
/* next */
TABLES /TABLE=a.
