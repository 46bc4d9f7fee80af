LIST.
Comment Income. Don't use it

  tabl table=a
 /sort=b. 
TABLES /TABLE=b.
