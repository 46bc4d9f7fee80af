/* one */

/* two */

TABLES /TABLE=a.
