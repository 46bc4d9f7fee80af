EXECUTE /* old */.
TABLES /TABLE=a /* by region */.
TABLES /TABLE=b.
