DEFINE !tab (x=!ENCLOSE('(',')'))
TABLES /TABLE=!x BY sex.
!ENDDEFINE.
!tab x=(q1).
!tab x=q2.
