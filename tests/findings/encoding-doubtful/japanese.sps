TITLE '’nˆæ•Ê‚ÌŠ“¾“Œv•\'.
TABLES /TABLE=a BY b.
