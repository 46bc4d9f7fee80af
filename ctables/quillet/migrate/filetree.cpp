#include "migrate/filetree.h"

#include <algorithm>
#include <deque>
#include <memory>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

#include "migrate/systemfiles.h"

namespace quillet::migrate {

namespace {

constexpr std::size_t kLongestPath = 4096;

std::string PathBelow(const std::string& folder, const std::string& name) {
    return folder.empty() ? name : JoinPath(folder, name);
}

// Finds out what a link of the source leads to. Each name is looked up in a folder that is held,
// so that at any moment it is known whether, and where, one is in the source.
class LinkResolver {
public:
    explicit LinkResolver(const Folder& root) : m_root(root) {}

    // Where a link led.
    struct Destination {
        FileStatus status;                 // of a folder its kind alone
        std::optional<std::string> place;  // below the root; nothing when it is outside
    };

    // Resolves the link `name` of `folder`, whose place is `relative`. False with `error` set when
    // it leads nowhere.
    [[nodiscard]] bool Resolve(std::shared_ptr<const Folder> folder, const std::string& relative,
                               const std::string& name, Destination& destination,
                               std::error_code& error) {
        m_folder = std::move(folder);
        m_place = relative;
        m_names = {name};
        m_links = 0;
        while (!m_names.empty()) {
            const std::string next = std::move(m_names.front());
            m_names.pop_front();
            if (!Step(next, error)) return false;
        }
        destination = {m_status, m_place};
        return true;
    }

private:
    [[nodiscard]] bool Step(const std::string& name, std::error_code& error) {
        if (name.empty() || name == ".") return true;
        if (name == "..") return Ascend(error);
        if (!m_folder->ReadStatus(name, m_status, error)) return false;
        if (m_status.kind == FileKind::kLink) return TakeLink(name, error);
        if (m_status.kind == FileKind::kFolder) return Descend(name, error);
        return TakeFile(name, error);
    }

    [[nodiscard]] bool TakeFile(const std::string& name, std::error_code& error) {
        if (!m_names.empty()) {
            error = std::make_error_code(std::errc::not_a_directory);
            return false;
        }
        if (m_place) m_place = PathBelow(*m_place, name);
        return true;
    }

    // What the link says is what comes next.
    [[nodiscard]] bool TakeLink(const std::string& name, std::error_code& error) {
        constexpr int kMostLinks = 40;  // as the system itself counts
        if (++m_links > kMostLinks) {
            error = std::make_error_code(std::errc::too_many_symbolic_link_levels);
            return false;
        }
        std::string text;
        if (!m_folder->ReadLink(name, text, error)) return false;
        m_status.kind = FileKind::kFolder;  // where one is until a name is looked up
        if (text.starts_with('/')) {
            m_folder = Folder::Open("/", error);
            m_place.reset();
            if (!Arrive()) return false;
        }
        std::deque<std::string> names;
        for (std::size_t begin = 0; begin <= text.size();) {
            const std::size_t end = std::min(text.find('/', begin), text.size());
            names.push_back(text.substr(begin, end - begin));
            begin = end + 1;
        }
        m_names.insert(m_names.begin(), names.begin(), names.end());
        return true;
    }

    [[nodiscard]] bool Descend(const std::string& name, std::error_code& error) {
        m_folder = m_folder->OpenFolder(name, error);
        if (m_place) m_place = PathBelow(*m_place, name);
        return Arrive();
    }

    [[nodiscard]] bool Ascend(std::error_code& error) {
        m_folder = m_folder->OpenParent(error);
        if (m_place && m_place->empty()) {
            m_place.reset();
        } else if (m_place) {
            m_place->resize(FolderPartOf(*m_place).size());
        }
        return Arrive();
    }

    // The root is known by what it is, not by the way that led to it.
    [[nodiscard]] bool Arrive() {
        if (m_folder == nullptr) return false;
        m_status.kind = FileKind::kFolder;
        if (m_folder->Identity() == m_root.Identity()) m_place = "";
        return true;
    }

    const Folder& m_root;
    std::shared_ptr<const Folder> m_folder;
    std::optional<std::string> m_place;  // of the folder, as in `Destination`
    FileStatus m_status;                 // of what was reached last
    std::deque<std::string> m_names;     // to be looked up next
    int m_links = 0;                     // that were taken
};

// Any other error tells nothing about the link.
bool LeadsNowhere(const std::error_code& error) {
    return error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory ||
           error == std::errc::too_many_symbolic_link_levels ||
           error == std::errc::permission_denied || error == std::errc::filename_too_long;
}

class TreeWalk {
public:
    explicit TreeWalk(const Folder& root) : m_root(root), m_links(root) {}

    FileTree Run(const std::stop_token& stop) {
        // Not a recursion: the depth of an archive is not ours to choose. Nor are folders held
        // open while others are looked into: there may be too many.
        EnterFolder({}, m_root.Identity());
        while (!m_waiting.empty() && !stop.stop_requested()) {
            const WaitingFolder folder = std::move(m_waiting.back());
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
    struct WaitingFolder {
        std::string path;
        FileIdentity identity;
    };

    void Add(std::string path, TreeEntry::Kind kind, std::string message) {
        m_tree.entries.push_back({std::move(path), kind, 0, std::move(message)});
    }

    void AddLink(std::string path, std::string message) {
        Add(std::move(path), TreeEntry::Kind::kSkipped, std::move(message));
        m_tree.entries.back().isLinkNotFollowed = true;
    }

    void AddFolderMetBefore(const std::string& relative) {
        Add(relative, TreeEntry::Kind::kSkipped,
            "a folder that was already met under another name");
    }

    void EnterFolder(const std::string& relative, FileIdentity identity) {
        if (m_tree.identities.insert(identity).second) {
            m_waiting.push_back({relative, identity});
        } else {
            AddFolderMetBefore(relative);
        }
    }

    // Most folders lie in the one that was looked into last.
    [[nodiscard]] std::shared_ptr<const Folder> Open(const std::string& relative,
                                                     std::error_code& error) {
        const std::string_view path = relative;
        std::string obstacle;
        const bool isBelow = m_last != nullptr && path.size() > m_lastPath.size() &&
                             path.starts_with(m_lastPath) && path[m_lastPath.size()] == '/';
        m_last = isBelow ? m_last->OpenBelow(path.substr(m_lastPath.size() + 1), obstacle, error)
                         : m_root.OpenBelow(path, obstacle, error);
        m_lastPath = relative;
        return m_last;
    }

    void LookInto(const WaitingFolder& waiting) {
        std::error_code error;
        std::vector<std::string> names;
        const std::shared_ptr<const Folder> folder = Open(waiting.path, error);
        // Another one may have taken its place.
        if (folder != nullptr && folder->Identity() != waiting.identity &&
            !m_tree.identities.insert(folder->Identity()).second) {
            return AddFolderMetBefore(waiting.path);
        }
        if (folder == nullptr || !folder->List(names, error)) {
            Add(waiting.path.empty() ? "." : waiting.path, TreeEntry::Kind::kUnreadable,
                "the folder cannot be read: " + DescribeError(error));
        }
        if (!waiting.path.empty()) m_tree.folders.push_back(waiting.path);
        for (const std::string& name : names) LookAt(folder, waiting.path, name);
    }

    void LookAt(const std::shared_ptr<const Folder>& folder, const std::string& folderPath,
                const std::string& name) {
        std::string relative = PathBelow(folderPath, name);
        FileStatus status;
        std::error_code error;
        if (relative.size() >= kLongestPath) {
            error = std::make_error_code(std::errc::filename_too_long);
        }
        if (error || !folder->ReadStatus(name, status, error)) {
            return Add(std::move(relative), TreeEntry::Kind::kUnreadable, error.message());
        }
        switch (status.kind) {
            case FileKind::kFile:
                m_tree.entries.push_back(
                    {std::move(relative), TreeEntry::Kind::kFile, status.size, {}});
                break;
            case FileKind::kFolder:
                EnterFolder(relative, status.identity);
                break;
            case FileKind::kLink:
                LookAtLink(folder, folderPath, name);
                break;
            case FileKind::kOther:
                Add(std::move(relative), TreeEntry::Kind::kSkipped, "not a regular file");
                break;
        }
    }

    void LookAtLink(const std::shared_ptr<const Folder>& folder, const std::string& folderPath,
                    const std::string& name) {
        std::string relative = PathBelow(folderPath, name);
        std::error_code error;
        LinkResolver::Destination destination;
        if (!m_links.Resolve(folder, folderPath, name, destination, error)) {
            if (!LeadsNowhere(error)) {
                return Add(std::move(relative), TreeEntry::Kind::kUnreadable, error.message());
            }
            return AddLink(std::move(relative), "a link that leads nowhere: " + error.message());
        }
        if (!destination.place) {
            return AddLink(std::move(relative), "a link that leads out of the source");
        }
        if (destination.status.kind == FileKind::kFolder) {
            return AddLink(std::move(relative),
                           "a link to a folder of the source, which is met under its own name");
        }
        if (destination.status.kind != FileKind::kFile) {
            return AddLink(std::move(relative), "a link to what is not a regular file");
        }
        m_tree.entries.push_back({std::move(relative),
                                  TreeEntry::Kind::kFile,
                                  destination.status.size,
                                  {},
                                  std::move(*destination.place)});
    }

    const Folder& m_root;
    LinkResolver m_links;
    FileTree m_tree;
    std::vector<WaitingFolder> m_waiting;
    std::shared_ptr<const Folder> m_last;
    std::string m_lastPath;
};

}  // namespace

FileTree WalkTree(const Folder& root, const std::stop_token& stop) {
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
    constexpr std::string_view kUtf32LittleEndian("\xFF\xFE\0\0", 4);
    constexpr std::string_view kUtf32BigEndian("\0\0\xFE\xFF", 4);
    if (beginning.starts_with(kUtf32LittleEndian) || beginning.starts_with(kUtf32BigEndian)) {
        return Content::kUtf32;
    }
    if (beginning.starts_with("\xFF\xFE")) return Content::kUtf16LittleEndian;
    if (beginning.starts_with("\xFE\xFF")) return Content::kUtf16BigEndian;
    return beginning.find('\0') == std::string_view::npos ? Content::kText : Content::kOther;
}

}  // namespace quillet::migrate
