* Income. /* by region */
TABLES /TABLE=a.
