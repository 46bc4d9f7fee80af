/* a */ /* b */ igr
/x1=var(a).
