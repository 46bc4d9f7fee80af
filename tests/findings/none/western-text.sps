* Grφίe.
TABLES /TABLE=grφίe /TITLE='Grφίe'.
