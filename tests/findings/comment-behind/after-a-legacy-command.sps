TABLES /TABLE=a. /* by region */
TABLES /TABLE=b.
