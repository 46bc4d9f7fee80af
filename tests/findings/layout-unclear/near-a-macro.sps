mytext.
yours.
DEFINE !f ()
TABLES /TABLE=a.
!ENDDEFINE.
