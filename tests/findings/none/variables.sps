FREQUENCIES tables tab1 tab.
MEANS
 tab1 tables BY sex.
LIST
 tables sex
 tab1.
FREQUENCIES a tables /STATISTICS=MEAN.
TABLES /TABLE=a BY b.
