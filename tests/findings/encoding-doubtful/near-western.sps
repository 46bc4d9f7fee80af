TITLE 'Größe à la carte, naïve, Åland, säännöt, m², 20 °C'.
TABLES /TABLE=a BY b.
