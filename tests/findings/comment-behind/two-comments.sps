EXECUTE. /* old */ /* and odd */
TABLES /TABLE=a.
