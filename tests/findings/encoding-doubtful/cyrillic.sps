TITLE 'Привет мир'.
TABLES /TABLE=a BY b.
