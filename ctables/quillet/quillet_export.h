// What a shared library of quillet shows; all else in it is hidden.
#ifndef QUILLET_QUILLET_EXPORT_H
#define QUILLET_QUILLET_EXPORT_H

/// Stands before each function, and each class that users derive from, of the public header.
/// Without meaning for the static library, and on Windows, where there is no other.
#if defined(__GNUC__) && !defined(_WIN32)
#define QUILLET_EXPORT __attribute__((visibility("default")))
#else
#define QUILLET_EXPORT
#endif

#endif  // QUILLET_QUILLET_EXPORT_H
