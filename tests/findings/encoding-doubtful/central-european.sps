TITLE 'Za¿ó³æ gêœl¹ jaŸñ, Ÿród³o'.
TABLES /TABLE=a BY b.
