DEFINE !vars () a b !ENDDEFINE.
TABLES /TABLE=a.
LIST !vars.
