* Don't stop here.
DOCUMENT It's no syntax.
BEGIN DATA
'open \
END DATA.
TABLES /TABLE=a.
