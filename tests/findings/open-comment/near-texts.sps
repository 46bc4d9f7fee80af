* Old
CROSSTABS
  TABLES = a BY b.
* Old
MEANS TABLES=a BY b.
* Old
FREQUENCIES tables tab1.
* Old
TITLE 'Old. TABLES /TABLE=a'.
* Old
LIST /* TABLES /TABLE=a. */ a.
* Old
CTABLES
  /TABLE a BY b.
* Old
These tables are old.
