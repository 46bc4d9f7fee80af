* Income. TABLES /TABLE=c.
LIST.
