EXECUTE. /* old */
CROSSTABS
  TABLES = a BY b.
EXECUTE. /* old */
MEANS TABLES=a BY b.
EXECUTE. /* old */
FREQUENCIES tables tab1.
EXECUTE. /* old */
TITLE 'Old. TABLES /TABLE=a'.
EXECUTE. /* old */
LIST /* TABLES /TABLE=a. */ a.
EXECUTE. /* old */
CTABLES
  /TABLE a BY b.
