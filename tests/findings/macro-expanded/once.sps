* Tables by sex.
DEFINE !tab (x=!TOKENS(1))
TABLES /TABLE=!x BY sex.
!ENDDEFINE.
!tab x=q1.
