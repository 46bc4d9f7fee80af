TABLES /TABLE=a /TITLE='x'
  /* GET FILE=x. */
  /CORNER='y'
  /* LIST. */ .
