COMPUTE x=1. /* one
IGRAPH /X1=VAR(a) /BAR.
