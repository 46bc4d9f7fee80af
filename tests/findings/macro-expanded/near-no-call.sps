DEFINE !tab (x=!TOKENS(1))
TABLES /TABLE=!x BY sex.
!ENDDEFINE.
* !tab x=q1.
TITLE '!tab x=q1'.
