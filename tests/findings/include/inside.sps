TABLES /TABLE=a BY b.
INSERT FILE='inside.sps'.
