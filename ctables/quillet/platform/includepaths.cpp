#include "platform/includepaths.h"

#include <algorithm>

#include "platform/multibyte.h"

namespace quillet {

namespace {

// `path` with "/" alone, without "." and, as far as it can be, "..".
std::string NormalizedPath(std::string_view path) {
    std::vector<std::string_view> components;
    for (std::size_t begin = 0; begin <= path.size();) {
        const std::size_t found = path.find_first_of("/\\", begin);
        const std::size_t end = found == std::string_view::npos ? path.size() : found;
        const std::string_view component = path.substr(begin, end - begin);
        begin = end + 1;
        if (component.empty() || component == ".") continue;
        if (component == ".." && !components.empty() && components.back() != "..") {
            components.pop_back();
        } else {
            components.push_back(component);
        }
    }
    std::string result;
    for (const std::string_view component : components) {
        if (!result.empty()) result += '/';
        result += component;
    }
    return result;
}

// Sets `path` to its next shorter tail; false when it was the last one.
bool ShortenTail(std::string_view& path) {
    const std::size_t separator = path.find('/');
    if (separator == std::string_view::npos) return false;
    path.remove_prefix(separator + 1);
    return true;
}

bool IsAbsolute(std::string_view path) {
    return path.starts_with('/') || path.starts_with('\\') || path.substr(1).starts_with(':');
}

}  // namespace

IncludePaths::IncludePaths(const std::vector<std::string>& names) {
    for (std::size_t index = 0; index < names.size(); ++index) {
        const std::string name = NormalizedPath(names[index]);
        m_longestName = std::max(m_longestName, name.size());
        Add(m_names, InUpperAscii(name), index);
        Add(m_namesAsTheyAre, name, index);
        std::string_view tail = name;
        do {
            Add(m_tails, InUpperAscii(tail), index);
            Add(m_tailsAsTheyAre, std::string(tail), index);
        } while (ShortenTail(tail));
    }
}

std::optional<std::size_t> IncludePaths::Find(std::string_view path,
                                              std::string_view includingFile) const {
    const std::string normalized = NormalizedPath(path);
    if (normalized.empty()) return std::nullopt;
    if (!IsAbsolute(path)) {
        if (const auto index = OnlyOne(m_names, m_namesAsTheyAre, normalized)) return index;
        std::string beside(includingFile);
        const std::size_t separator = beside.find_last_of("/\\");
        beside.resize(separator == std::string::npos ? 0 : separator + 1);
        beside = NormalizedPath(beside.append(path));
        if (const auto index = OnlyOne(m_names, m_namesAsTheyAre, beside)) return index;
    }
    std::string_view tail = normalized;
    do {
        // A path can be as long as its file; no tail is copied for nothing.
        if (tail.size() > m_longestName) continue;
        if (FindIn(m_tails, InUpperAscii(tail)) != nullptr) {
            return OnlyOne(m_tails, m_tailsAsTheyAre, std::string(tail));
        }
    } while (ShortenTail(tail));
    return std::nullopt;
}

void IncludePaths::Add(FitsByPath& fits, const std::string& path, std::size_t index) {
    Fits& place = fits[path];
    ++place.count;
    place.index = index;
}

const IncludePaths::Fits* IncludePaths::FindIn(const FitsByPath& fits, const std::string& path) {
    const auto found = fits.find(path);
    return found == fits.end() ? nullptr : &found->second;
}

std::optional<std::size_t> IncludePaths::OnlyOne(const FitsByPath& anyCase,
                                                 const FitsByPath& sameCase,
                                                 const std::string& path) {
    const Fits* pFits = FindIn(anyCase, InUpperAscii(path));
    if (pFits != nullptr && pFits->count > 1) pFits = FindIn(sameCase, path);
    if (pFits == nullptr || pFits->count != 1) return std::nullopt;
    return pFits->index;
}

}  // namespace quillet
