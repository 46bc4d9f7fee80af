/* next */
CROSSTABS
  TABLES = a BY b.
/* next */
MEANS TABLES=a BY b.
/* next */
FREQUENCIES tables tab1.
/* next */
TITLE 'Old. TABLES /TABLE=a'.
/* next */
LIST /* TABLES /TABLE=a. */ a.
/* next */
CTABLES
  /TABLE a BY b.
/* TABLES /TABLE=a */
LIST.
