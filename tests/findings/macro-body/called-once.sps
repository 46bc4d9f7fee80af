DEFINE !tab (x=!TOKENS(1))
TABLES /TABLE=a BY !x.
!ENDDEFINE.
LIST.
!tab x=b.
