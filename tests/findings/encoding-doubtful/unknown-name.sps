* Encoding: nonsense.
TITLE 'Größe'.
TABLES /TABLE=a BY b.
