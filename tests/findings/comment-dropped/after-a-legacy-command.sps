TABLES /TABLE=a. /* by region  
