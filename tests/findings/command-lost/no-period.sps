LIST.
IGRAPH /X1=VAR(a) /BAR
sort cases
 by a.
