* Made of old: TABLES /TABLE=a.
LIST /* all. TABLES /TABLE=a. */ a.
TABLES /TABLE=a BY b.
