TITLE 'Zażółć gęślą jaźń, Привет, 지역'.
TABLES /TABLE=a BY b.
