TABLES /TABLE=a BY b.
INCLUDE 'c:\old\common.sps'.
INSERT
  FILE = "it's.sps" SYNTAX=BATCH.
