* Encoding: windows-1251.
TITLE 'Привет мир'.
TABLES /TABLE=a BY b.
