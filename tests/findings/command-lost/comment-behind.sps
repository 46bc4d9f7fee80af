TABLES /TABLE=a BY b. /* foo */

GET FILE=x.
