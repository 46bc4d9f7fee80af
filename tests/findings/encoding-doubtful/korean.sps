TITLE '지역별 소득 통계'.
TABLES /TABLE=a BY b.
