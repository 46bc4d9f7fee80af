INCLUDE 'nothing-else.sps'.
LIST. /* all
