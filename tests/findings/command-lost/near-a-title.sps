TABLES /TABLE=a /TITLE='Old. List of names' /* x. list */ /CORNER="Not. Show".
