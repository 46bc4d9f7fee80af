DEFINE !old ()
CROSSTABS
  TABLES = a BY b.
MEANS TABLES=a BY b.
FREQUENCIES tables tab1.
TITLE 'Old. TABLES /TABLE=a'.
LIST /* TABLES /TABLE=a. */ a.
CTABLES
  /TABLE a BY b.
* These tables are old.
!ENDDEFINE.
!old.
