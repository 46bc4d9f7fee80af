#include "migrate/filetree.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

#include "migrate/systemfiles.h"

namespace quillet::migrate {

namespace {

class TreeWalk {
public:
    explicit TreeWalk(const std::string& root) : m_root(root) {}

    FileTree Run(const std::stop_token& stop) {
        // Not a recursion: the depth of an archive is not ours to choose.
        EnterFolder({});
        while (!m_waiting.empty() && !stop.stop_requested()) {
            const std::string folder = std::move(m_waiting.back());
            m_waiting.pop_back();
            LookInto(folder);
        }
        std::sort(
            m_tree.entries.begin(), m_tree.entries.end(),
            [](const TreeEntry& left, const TreeEntry& right) { return left.path < right.path; });
        std::sort(m_tree.folders.begin(), m_tree.folders.end());
        return std::move(m_tree);
    }

private:
    [[nodiscard]] std::string PathOf(const std::string& relative) const {
        return relative.empty() ? m_root : JoinPath(m_root, relative);
    }

    void Add(std::string path, TreeEntry::Kind kind, std::string message) {
        m_tree.entries.push_back({std::move(path), kind, 0, std::move(message)});
    }

    void EnterFolder(const std::string& relative) {
        FileStatus status;
        std::error_code error;
        if (!ReadStatus(PathOf(relative), Links::kShow, status, error)) {
            Add(relative, TreeEntry::Kind::kUnreadable, error.message());
        } else if (!m_entered.emplace(status.device, status.inode).second) {
            Add(relative, TreeEntry::Kind::kSkipped,
                "a folder that was already met under another name");
        } else {
            m_waiting.push_back(relative);
        }
    }

    void LookInto(const std::string& folder) {
        std::vector<std::string> names;
        std::error_code error;
        if (!ListFolder(PathOf(folder), names, error)) {
            Add(folder.empty() ? "." : folder, TreeEntry::Kind::kUnreadable,
                "the folder cannot be read: " + error.message());
        }
        if (!folder.empty()) m_tree.folders.push_back(folder);
        for (const std::string& name : names) {
            LookAt(folder.empty() ? name : JoinPath(folder, name));
        }
    }

    void LookAt(const std::string& relative) {
        FileStatus status;
        std::error_code error;
        if (!ReadStatus(PathOf(relative), Links::kShow, status, error)) {
            Add(relative, TreeEntry::Kind::kUnreadable, error.message());
            return;
        }
        switch (status.kind) {
            case FileKind::kFile:
                m_tree.entries.push_back({relative, TreeEntry::Kind::kFile, status.size, {}});
                break;
            case FileKind::kFolder:
                EnterFolder(relative);
                break;
            case FileKind::kLink:
                LookAtLink(relative);
                break;
            case FileKind::kOther:
                Add(relative, TreeEntry::Kind::kSkipped, "not a regular file");
                break;
        }
    }

    void LookAtLink(const std::string& relative) {
        std::error_code error;
        const std::string target = std::filesystem::canonical(PathOf(relative), error).native();
        FileStatus status;
        if (error || !ReadStatus(target, Links::kShow, status, error)) {
            Add(relative, TreeEntry::Kind::kSkipped,
                "a link that leads nowhere: " + error.message());
        } else if (!IsInside(target, m_root)) {
            Add(relative, TreeEntry::Kind::kSkipped, "a link that leads out of the source");
        } else if (status.kind == FileKind::kFile) {
            m_tree.entries.push_back({relative, TreeEntry::Kind::kFile, status.size, {}});
        } else if (status.kind == FileKind::kFolder) {
            Add(relative, TreeEntry::Kind::kSkipped,
                "a link to a folder of the source, which is met under its own name");
        } else {
            Add(relative, TreeEntry::Kind::kSkipped, "a link to what is not a regular file");
        }
    }

    const std::string& m_root;
    FileTree m_tree;
    std::vector<std::string> m_waiting;
    std::set<std::pair<std::uint64_t, std::uint64_t>> m_entered;
};

}  // namespace

FileTree WalkTree(const std::string& root, const std::stop_token& stop) {
    return TreeWalk(root).Run(stop);
}

Content LookAtContent(TextInput& input) {
    constexpr std::size_t kBytesLookedAt = 64UL * 1024;
    std::vector<char> buffer(kBytesLookedAt);
    std::size_t filled = 0;
    while (filled < buffer.size()) {
        const std::size_t count = input.Read(buffer.data() + filled, buffer.size() - filled);
        if (count == 0) break;
        filled += count;
    }
    const std::string_view beginning(buffer.data(), filled);
    if (!input.Rewind()) return Content::kOther;
    if (beginning.starts_with("\xFF\xFE") || beginning.starts_with("\xFE\xFF")) {
        return Content::kUtf16;
    }
    return beginning.find('\0') == std::string_view::npos ? Content::kText : Content::kOther;
}

}  // namespace quillet::migrate
