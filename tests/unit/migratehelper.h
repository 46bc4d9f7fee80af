// What the tests of quillet-migrate share.
#ifndef QUILLET_TESTS_MIGRATEHELPER_H
#define QUILLET_TESTS_MIGRATEHELPER_H

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <system_error>

#include "migrate/systemfiles.h"
#include "platform/folder.h"
#include "quillet.h"

namespace quillet::migrate {

/// A folder that goes away with the object.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name =
            (std::filesystem::temp_directory_path() / "quillet-unit-XXXXXX").string();
        m_path = mkdtemp(name.data());
    }
    ~TemporaryFolder() {
        std::error_code error;
        std::filesystem::remove_all(m_path, error);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] std::string PathOf(std::string_view name) const { return JoinPath(m_path, name); }
    [[nodiscard]] const std::string& Path() const { return m_path; }
    /// Holds the folder open; never null where the test can go on.
    [[nodiscard]] std::shared_ptr<const Folder> Open() const {
        std::error_code error;
        return Folder::Open(m_path, error);
    }

    /// Writes a file and returns its path.
    std::string Create(std::string_view name, std::string_view content) const {
        std::ofstream(PathOf(name), std::ios::binary) << content;
        return PathOf(name);
    }
    [[nodiscard]] std::string Contents(std::string_view name) const {
        std::ostringstream content;
        content << std::ifstream(PathOf(name), std::ios::binary).rdbuf();
        return content.str();
    }
    /// Writes a file and opens it; never null where the test can go on.
    [[nodiscard]] std::unique_ptr<StoredFile> Store(std::string_view name,
                                                    std::string_view content) const {
        std::error_code error;
        return StoredFile::Open(Create(name, content), error);
    }

private:
    std::string m_path;
};

/// Takes everything until it has had enough.
class TextCollector final : public TextOutput {
public:
    explicit TextCollector(std::size_t limit = std::string::npos) : m_limit(limit) {}
    bool Write(std::string_view bytes) override {
        if (text.size() + bytes.size() > m_limit) return false;
        text += bytes;
        return true;
    }
    std::string text;

private:
    std::size_t m_limit;
};

}  // namespace quillet::migrate

#endif  // QUILLET_TESTS_MIGRATEHELPER_H
