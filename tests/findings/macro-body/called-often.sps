DEFINE crosses (x=!TOKENS(1))
WEIGHT BY w.
TABLES
  /TABLE=a BY !x
  /STATISTICS=COUNT.
!ENDDEFINE.
crosses x=b.
CROSSES x=c.
* crosses x=d.
TITLE 'crosses'.
crosses x=e.
