LIST /* TABLES /TABLE=a. */ a. 
LIST a /* x. TABLES /TABLE=b
 b.
* Old: /* here. TABLES /TABLE=a. */ gone.
TABLES /TABLE=a BY b.
