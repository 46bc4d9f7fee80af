// People know their archive by its folders, so these are what a large report is split by: as few as
// can be, for each part is a page that somebody has to open.
#include "migrate/pageparts.h"

#include <algorithm>
#include <unordered_map>

#include "migrate/commandkeys.h"

namespace quillet::migrate {

namespace {

// What a page says of a file beside its texts, about.
constexpr std::uint64_t kBytesOfFacts = 1000;

std::uint64_t TextBytesIn(const FileEntry& file) {
    return file.commands.length + file.findings.length;
}

using FolderSizes = std::unordered_map<std::string_view, std::uint64_t>;

// The folders of `path`, the outermost first and "" before it, until `visit` returns false.
template <class Visit>
void ForEachFolder(std::string_view path, Visit visit) {
    std::size_t end = 0;
    while (visit(path.substr(0, end))) {
        end = path.find('/', end == 0 ? 0 : end + 1);
        if (end == std::string_view::npos) return;
    }
}

FolderSizes SizesOf(const Report& report) {
    FolderSizes sizes;
    for (const FileEntry& file : report.files) {
        const std::uint64_t size = TextBytesIn(file) + kBytesOfFacts;
        ForEachFolder(file.facts.path, [&](std::string_view folder) {
            sizes[folder] += size;
            return true;
        });
    }
    return sizes;
}

// The first folder on the way to the file that is small enough or, if none is, the last.
std::string_view PartFolderOf(std::string_view path, const FolderSizes& sizes, std::uint64_t most) {
    std::string_view result;
    ForEachFolder(path, [&](std::string_view folder) {
        result = folder;
        return sizes.at(folder) > most;
    });
    return result;
}

bool IsPlain(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
           (byte >= '0' && byte <= '9');
}

}  // namespace

PageParts PartsOf(const Report& report, std::uint64_t most) {
    const FolderSizes sizes = SizesOf(report);
    PageParts result;
    result.partOfFile.reserve(report.files.size());
    std::unordered_map<std::string_view, std::size_t> numbers;
    for (std::size_t file = 0; file < report.files.size(); ++file) {
        const std::string_view folder = PartFolderOf(report.files[file].facts.path, sizes, most);
        const auto [number, isNew] = numbers.try_emplace(folder, result.parts.size());
        if (isNew) result.parts.push_back({std::string(folder), {}});
        result.parts[number->second].files.push_back(file);
        result.partOfFile.push_back(number->second);
    }
    return result;
}

std::uint64_t TextBytesOf(const Report& report) {
    std::uint64_t bytes = 0;
    for (const FileEntry& file : report.files) bytes += TextBytesIn(file);
    return bytes;
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
