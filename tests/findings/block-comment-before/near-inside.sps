TABLES /* by region */ /TABLE=a.
TABLES
/* next */
  /TABLE=b.
