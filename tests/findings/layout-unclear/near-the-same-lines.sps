mytext.
yours.
TABLES /TABLE=a
  /STATISTICS=COUNT.
