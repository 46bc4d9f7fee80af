// People know their archive by its folders, so these are what a large report is split by: as few as
// can be, for each part is a page that somebody has to open, with all that any page needs.
//
// Files are sorted by their paths, so all that lies in a folder, however deep, is one range of
// them. From one folder to those in it each path is read on by one name, and no further than that.
#include "migrate/pageparts.h"

#include <algorithm>
#include <span>
#include <utility>

#include "migrate/commandkeys.h"

namespace quillet::migrate {

namespace {

// Nobody has folders in one another to this depth but to see what becomes of them: each could be a
// part for the sake of a single file.
constexpr int kMostSplits = 64;

// The files below a folder.
struct FolderRange {
    std::size_t begin = 0;
    std::size_t end = 0;    // one after the last
    std::size_t start = 0;  // where in their paths the names in the folder begin
};

class FolderSplitter {
public:
    // Both are borrowed.
    FolderSplitter(const Report& report, const std::vector<std::uint64_t>& bytes,
                   std::uint64_t most)
        : m_files(report.files), m_most(most), m_bytesBefore(1, 0) {
        for (const std::uint64_t size : bytes) {
            m_bytesBefore.push_back(m_bytesBefore.back() + size);
        }
    }

    PageParts Run() {
        if (!m_files.empty()) Add({0, m_files.size(), 0}, 0);
        std::sort(m_parts.begin(), m_parts.end(), [](const PagePart& left, const PagePart& right) {
            return left.files.front() < right.files.front();
        });
        PageParts result{std::move(m_parts), std::vector<std::size_t>(m_files.size())};
        for (std::size_t part = 0; part < result.parts.size(); ++part) {
            for (const std::size_t file : result.parts[part].files) result.partOfFile[file] = part;
        }
        return result;
    }

private:
    [[nodiscard]] std::uint64_t BytesOf(const FolderRange& range) const {
        return m_bytesBefore[range.end] - m_bytesBefore[range.begin];
    }
    [[nodiscard]] std::string FolderOf(const FolderRange& range) const {
        const std::size_t length = range.start == 0 ? 0 : range.start - 1;
        return m_files[range.begin].facts.path.substr(0, length);
    }

    void Add(const FolderRange& folder, int splits) {
        if (BytesOf(folder) <= m_most || splits == kMostSplits) return AddPart({&folder, 1});
        PagePart own{FolderOf(folder), FolderOf(folder), {}};
        std::vector<FolderRange> inner;
        for (std::size_t file = folder.begin; file < folder.end;) {
            const std::size_t slash = m_files[file].facts.path.find('/', folder.start);
            if (slash == std::string::npos) {
                own.files.push_back(file++);
            } else {
                inner.push_back(InnerFolder(file, folder, slash + 1));
                file = inner.back().end;
            }
        }
        if (!own.files.empty()) m_parts.push_back(std::move(own));
        AddNeighbors(inner, splits + 1);
    }

    // The folder in `folder` that this file is the first of; `start` is where the names in it
    // begin.
    [[nodiscard]] FolderRange InnerFolder(std::size_t file, const FolderRange& folder,
                                          std::size_t start) const {
        const std::size_t length = start - folder.start;
        const std::string& first = m_files[file].facts.path;
        FolderRange inner{file, file + 1, start};
        while (inner.end < folder.end &&
               m_files[inner.end].facts.path.compare(folder.start, length, first, folder.start,
                                                     length) == 0) {
            ++inner.end;
        }
        return inner;
    }

    // As many as there is room for become a part together.
    void AddNeighbors(const std::vector<FolderRange>& folders, int splits) {
        for (std::size_t first = 0; first < folders.size();) {
            std::uint64_t bytes = BytesOf(folders[first]);
            if (bytes > m_most) {
                Add(folders[first++], splits);
                continue;
            }
            std::size_t end = first + 1;
            while (end < folders.size() && BytesOf(folders[end]) <= m_most - bytes) {
                bytes += BytesOf(folders[end++]);
            }
            AddPart(std::span(folders).subspan(first, end - first));
            first = end;
        }
    }

    void AddPart(std::span<const FolderRange> folders) {
        PagePart part{FolderOf(folders.front()), FolderOf(folders.back()), {}};
        for (const FolderRange& folder : folders) {
            for (std::size_t file = folder.begin; file < folder.end; ++file) {
                part.files.push_back(file);
            }
        }
        m_parts.push_back(std::move(part));
    }

    const std::vector<FileEntry>& m_files;
    std::uint64_t m_most = 0;
    std::vector<std::uint64_t> m_bytesBefore;  // of the files before each, and of all
    std::vector<PagePart> m_parts;
};

bool IsPlain(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
           (byte >= '0' && byte <= '9');
}

}  // namespace

PageParts PartsOf(const Report& report, const std::vector<std::uint64_t>& bytes,
                  std::uint64_t most) {
    return FolderSplitter(report, bytes, most).Run();
}

std::string FolderTextOf(const PagePart& part) {
    return part.folder == part.lastFolder ? part.folder : part.folder + " to " + part.lastFolder;
}

std::string PartNameOf(std::string_view folder) {
    constexpr std::size_t kMostShown = 50;
    std::string shown(folder.substr(folder.size() - std::min(folder.size(), kMostShown)));
    std::replace_if(
        shown.begin(), shown.end(), [](char byte) { return !IsPlain(byte); }, '-');
    // Folders that look alike are told apart by the rest.
    if (!shown.empty()) shown += '-';
    return std::string(kPartNameStart).append(shown).append(TextHashOf(folder));
}

}  // namespace quillet::migrate
