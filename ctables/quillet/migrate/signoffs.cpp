// A sign-off is work that somebody has done, so none is ever dropped: a file with a member that is
// known and damaged, or stands there twice, is refused, and what is about a command that is no more
// goes along in the report. What a later version may have added is passed over.
#include "migrate/signoffs.h"

#include <cstddef>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <system_error>
#include <utility>
#include <vector>

#include "migrate/commandkeys.h"
#include "migrate/percentcode.h"
#include "migrate/reportmembers.h"
#include "migrate/storedtext.h"
#include "migrate/systemfiles.h"

namespace quillet::migrate {

namespace {

using nlohmann::json;

constexpr std::string_view kSignOffFormat = "quillet-signoff";
constexpr std::int64_t kSignOffVersion = 1;

// The members of a sign-off, of which only these have to be there.
constexpr const char* kNeeded[] = {"path", "hash", "number", "state"};

// Where nothing is said about copies, there are no more than it takes.
CommandKey CommandKeyOf(const json& element) {
    const auto number = element["number"].get<std::int64_t>();
    return {element["hash"].get<std::string>(), number, element.value("copies", number)};
}

// What is wrong with one, after its name; empty when nothing is.
std::string ProblemOfSignOff(const json& element) {
    if (!element.is_object()) return " is not an object";
    for (const char* pName : kNeeded) {
        if (!element.contains(pName)) return std::string(" lacks its ") + pName;
    }
    for (const Member& member : MembersOf(ReportPart::kSignOff)) {
        const auto found = element.find(member.name);
        if (found == element.end()) continue;
        const std::string problem = ProblemOf(member.kind, *found);
        if (!problem.empty()) {
            return std::string(".").append(member.name).append(" ").append(problem);
        }
    }
    const CommandKey key = CommandKeyOf(element);
    if (key.number < 1) return ".number is not a number from 1";
    if (key.copies < key.number) return ".copies is less than its number";
    return {};
}

std::string PathOf(const json& element) {
    const auto raw = element.find("rawPath");
    if (raw == element.end()) return element["path"].get<std::string>();
    return PercentDecode(raw->get_ref<const std::string&>()).value_or(std::string());
}

SignOff SignOffOf(const json& element) {
    SignOff signOff;
    signOff.key = CommandKeyOf(element);
    signOff.state = SignOffStateOf(element["state"].get_ref<const std::string&>())
                        .value_or(SignOffState::kChecked);
    signOff.remark = element.value("remark", std::string());
    signOff.firstLine = element.value("firstLine", std::int64_t{0});
    return signOff;
}

// Finds members that stand twice in an object, of which the parser would keep the last.
class DuplicateFinder {
public:
    // Takes the parser's events.
    void Take(int depth, json::parse_event_t event, const json& value) {
        constexpr int kInFile = 1;
        constexpr int kInList = 2;
        constexpr int kInSignOff = 3;
        const bool isKey = event == json::parse_event_t::key;
        if (isKey && depth == kInFile) {
            m_isInList = value == kList;
            const bool isKnown = value == "format" || value == "formatVersion" || m_isInList;
            if (isKnown) AddName(m_ofFile, "its ", value.get_ref<const std::string&>());
        } else if (m_isInList && depth == kInList && IsBeginning(event)) {
            ++m_count;
            m_ofSignOff.clear();
        } else if (m_isInList && isKey && depth == kInSignOff) {
            const auto& name = value.get_ref<const std::string&>();
            if (FindMember(ReportPart::kSignOff, name) != nullptr) {
                AddName(m_ofSignOff, "signOffs[" + std::to_string(m_count - 1) + "].", name);
            }
        }
    }

    // What is wrong; empty when nothing is.
    [[nodiscard]] const std::string& Problem() const { return m_problem; }

private:
    static constexpr std::string_view kList = "signOffs";

    static bool IsBeginning(json::parse_event_t event) {
        return event == json::parse_event_t::object_start ||
               event == json::parse_event_t::array_start || event == json::parse_event_t::value;
    }
    void AddName(std::set<std::string>& names, std::string_view before, const std::string& name) {
        if (names.insert(name).second || !m_problem.empty()) return;
        m_problem = std::string(before).append(name).append(" stands there twice");
    }

    bool m_isInList = false;
    std::size_t m_count = 0;  // of the elements so far
    std::set<std::string> m_ofFile;
    std::set<std::string> m_ofSignOff;
    std::string m_problem;
};

// The parts of a file that is none, however deep, are not kept.
json ParseFlat(std::string_view text, DuplicateFinder& duplicates) {
    constexpr int kDeepestPart = 4;
    const auto isKept = [&duplicates](int depth, json::parse_event_t event, const json& value) {
        duplicates.Take(depth, event, value);
        return depth <= kDeepestPart;
    };
    return json::parse(text, isKept, /*allow_exceptions=*/false);
}

// What is wrong with the file as a whole; empty when nothing is.
std::string ProblemOfFile(const json& file) {
    if (!file.is_object()) return "it is no JSON object, or it is damaged";
    if (file.value("format", json()) != kSignOffFormat) return "its format is another one";
    const json version = file.value("formatVersion", json());
    if (version != kSignOffVersion) return "its formatVersion is none that is known";
    const auto list = file.find("signOffs");
    return list == file.end() || !list->is_array() ? "its signOffs are no array" : "";
}

bool ReadAll(const StoredFile& file, std::uint64_t size, std::string& text) {
    return CopyStoredText(file, 0, size, [&text](const std::string& piece) {
        text += piece;
        return true;
    });
}

// Hands out those of one file that are about its commands.
bool TakeFrom(std::map<CommandKey, SignOff>& wanted, FileEntry& file) {
    std::vector<KeyedCommand> commands;
    if (!ReadKeyedCommands(file, commands)) return false;
    for (const KeyedCommand& command : commands) {
        const auto found = wanted.find(command.key);
        if (found == wanted.end()) continue;
        found->second.firstLine = command.firstLine;
        file.signOffs.push_back(std::move(found->second));
        wanted.erase(found);
    }
    return true;
}

}  // namespace

bool ParseSignOffs(std::string_view text, SignOffs& signOffs, std::string& problem) {
    DuplicateFinder duplicates;
    const json file = ParseFlat(text, duplicates);
    problem = ProblemOfFile(file);
    if (problem.empty()) problem = duplicates.Problem();
    if (!problem.empty()) return false;
    std::size_t index = 0;
    for (const json& element : file["signOffs"]) {
        const std::string name = "signOffs[" + std::to_string(index++) + "]";
        const std::string wrong = ProblemOfSignOff(element);
        if (!wrong.empty()) {
            problem = name + wrong;
            return false;
        }
        SignOff signOff = SignOffOf(element);
        const CommandKey key = signOff.key;
        if (!signOffs[PathOf(element)].emplace(key, std::move(signOff)).second) {
            problem = name + " is about the same command as one before it";
            return false;
        }
    }
    return true;
}

bool ReadSignOffs(const Folder& folder, const std::string& folderPath, SignOffs& signOffs,
                  std::string& problem) {
    const std::string path = JoinPath(folderPath, kSignOffName);
    std::error_code error;
    const std::unique_ptr<StoredFile> file =
        StoredFile::Open(folder, std::string(kSignOffName), error);
    if (file == nullptr && error == std::errc::no_such_file_or_directory) return true;
    std::string text;
    const std::optional<std::uint64_t> size =
        file != nullptr ? file->KnownSize() : std::optional<std::uint64_t>();
    if (file != nullptr && size > kMostSignOffBytes) {
        problem = "it is longer than " + std::to_string(kMostSignOffBytes) + " bytes";
    } else if (file == nullptr) {
        problem = DescribeError(error);
    } else if (!size || !ReadAll(*file, *size, text)) {
        problem = "it cannot be read to its end";
    } else if (ParseSignOffs(text, signOffs, problem)) {
        return true;
    }
    problem = "The sign-offs in " + path + " cannot be read, so nothing was done: " + problem +
              ". Correct the file, or move it away";
    return false;
}

bool AssignSignOffs(SignOffs signOffs, Report& report) {
    for (FileEntry& file : report.files) {
        const auto found = signOffs.find(file.facts.path);
        if (found != signOffs.end() && !TakeFrom(found->second, file)) return false;
    }
    for (auto& [path, others] : signOffs) {
        for (auto& [key, signOff] : others)
            report.otherSignOffs.push_back({path, std::move(signOff)});
    }
    return true;
}

}  // namespace quillet::migrate
