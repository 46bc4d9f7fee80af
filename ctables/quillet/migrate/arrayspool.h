// Collects what is to be said about the commands of one file, or of its findings.
#ifndef QUILLET_MIGRATE_ARRAYSPOOL_H
#define QUILLET_MIGRATE_ARRAYSPOOL_H

#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace quillet::migrate {

/// A JSON array that grows. What goes beyond a few MiB lies in a temporary file, for a file of
/// any size can hold any number of either; where there is no room for it, it stays in memory.
class ArraySpool {
public:
    /// Begins anew.
    void Clear();
    /// Appends an element, the text of a JSON value.
    void Add(std::string_view json);

    [[nodiscard]] bool IsEmpty() const { return Size() == 0; }
    /// The array in bytes, its brackets left out.
    [[nodiscard]] std::uint64_t Size() const { return m_storedSize + m_text.size(); }
    /// Hands the array, brackets left out, to `take` in pieces, until that returns false. True
    /// when all were taken.
    [[nodiscard]] bool CopyTo(const std::function<bool(std::string_view)>& take);

private:
    struct Closer {
        void operator()(std::FILE* pFile) const { static_cast<void>(std::fclose(pFile)); }
    };

    void Store();

    std::unique_ptr<std::FILE, Closer> m_file;  // holds the beginning
    std::uint64_t m_storedSize = 0;
    bool m_hasNoRoom = false;
    std::string m_text;
};

}  // namespace quillet::migrate

#endif  // QUILLET_MIGRATE_ARRAYSPOOL_H
