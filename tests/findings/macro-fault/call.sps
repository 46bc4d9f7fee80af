DEFINE !tab (x=!ENCLOSE('(',')') / n=!DEFAULT(1) !TOKENS(1))
!DO !i = 1 !TO !n
TABLES /TABLE=!x BY sex.
!DOEND
!ENDDEFINE.
!tab x=q1.
!tab x=(q1) n=a.
!tab x=(q1) n=2.
