EXECUTE. /* old */
TABLES /TABLE=a.
