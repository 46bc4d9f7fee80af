TABLES /TABLE=a BY b.
LIST. /* all of them
