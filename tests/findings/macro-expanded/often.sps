DEFINE !tab (x=!TOKENS(1))
TABLES /TABLE=!x BY sex.
FREQUENCIES !x.
IGRAPH /X1=VAR(!x) /BAR.
!ENDDEFINE.
!tab x=q1.
!tab x=q2.
DEFINE !both (!POSITIONAL !TOKENS(1) / !POSITIONAL !TOKENS(1))
!tab x=!1.
!tab x=!2.
!ENDDEFINE.
!both q3 q4.
