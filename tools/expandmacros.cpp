// Shows what the macros of a syntax file become: a developer's tool.
//
//     expandmacros [--json] [--batch] [--end-at-blank-lines] [--folder FOLDER] [file]
//
// Reads the file or standard input and writes its text with every call expanded; "--json" writes
// the definitions and the calls instead. What could not be expanded, and why, is told on standard
// error. Included files are looked for as they are named, beside the file that names them and, with
// "--folder", by the ends of their paths in that folder.

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "macro/expandfile.h"
#include "macro/fault.h"
#include "platform/codepage.h"
#include "platform/includepaths.h"

namespace {

namespace fs = std::filesystem;
using quillet::CodePage;

struct Arguments {
    bool json = false;
    quillet::macro::Layout layout;
    std::string folder;
    std::string fileName;
};

std::string ReadAll(std::istream& stream) {
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

bool ReadFile(const std::string& name, std::string& text) {
    std::error_code error;
    if (!fs::is_regular_file(name, error)) return false;
    std::ifstream file(name, std::ios::binary);
    text = ReadAll(file);
    return !file.bad();
}

const CodePage& CodePageOf(std::string_view text) {
    quillet::Utf8Validator validator;
    const bool mayBeUtf8 = validator.Add(text);
    return mayBeUtf8 && validator.IsValid() ? CodePage::Utf8() : CodePage::Windows1252();
}

class FileSystemResolver final : public quillet::macro::IncludeResolver {
public:
    FileSystemResolver(quillet::macro::Layout layout, const std::string& folder)
        : m_layout(layout), m_names(NamesIn(folder)), m_paths(m_names), m_folder(folder) {}

    bool Find(std::string_view path, const std::string& includingFile,
              quillet::macro::IncludedFile& file) override {
        std::string name(path);
        for (char& character : name) {
            if (character == '\\') character = '/';
        }
        return Open(name, file) || Open(fs::path(includingFile).parent_path() / name, file) ||
               FindInFolder(path, includingFile, file);
    }

private:
    static std::vector<std::string> NamesIn(const std::string& folder) {
        std::vector<std::string> names;
        if (folder.empty()) return names;
        std::error_code error;
        for (fs::recursive_directory_iterator place(folder, error), end; place != end;
             place.increment(error)) {
            if (place->is_regular_file(error)) {
                names.push_back(fs::relative(place->path(), folder, error).generic_string());
            }
        }
        return names;
    }

    bool Open(const fs::path& path, quillet::macro::IncludedFile& file) const {
        std::error_code error;
        file.name = fs::weakly_canonical(path, error).string();
        file.layout = m_layout;
        return !error && ReadFile(file.name, file.text);
    }

    bool FindInFolder(std::string_view path, const std::string& includingFile,
                      quillet::macro::IncludedFile& file) const {
        std::error_code error;
        const std::string from = fs::relative(includingFile, m_folder, error).generic_string();
        const auto index = m_paths.Find(path, from);
        return index && Open(fs::path(m_folder) / m_names[*index], file);
    }

    quillet::macro::Layout m_layout;
    std::vector<std::string> m_names;
    quillet::IncludePaths m_paths;
    std::string m_folder;
};

std::string JsonText(const CodePage& codePage, std::string_view text) {
    constexpr std::string_view kHexDigits = "0123456789abcdef";
    std::string json = "\"";
    for (const char character : quillet::TextAsUtf8(codePage, text)) {
        const auto byte = static_cast<unsigned char>(character);
        if (character == '"' || character == '\\') {
            json.append(1, '\\').append(1, character);
        } else if (byte < 0x20) {
            json.append("\\u00")
                .append(1, kHexDigits[byte >> 4U])
                .append(1, kHexDigits[byte & 15U]);
        } else {
            json += character;
        }
    }
    return json + '"';
}

void WriteJson(const CodePage& codePage, const quillet::macro::FileExpansion& expansion) {
    std::cout << "{\"definitions\": [";
    const char* separator = "\n";
    for (const quillet::macro::Definition& definition : expansion.definitions) {
        std::cout << separator << "  {\"name\": " << JsonText(codePage, definition.name)
                  << ", \"firstLine\": " << definition.firstLine
                  << ", \"lastLine\": " << definition.lastLine << '}';
        separator = ",\n";
    }
    std::cout << "],\n \"calls\": [";
    separator = "\n";
    for (const quillet::macro::Call& call : expansion.calls) {
        std::cout << separator << "  {\"name\": " << JsonText(codePage, call.name)
                  << ", \"line\": " << call.line << ", ";
        if (call.fault) {
            std::cout << "\"reason\": " << JsonText(codePage, ReasonText(*call.fault)) << '}';
        } else {
            std::cout << "\"text\": " << JsonText(codePage, call.text) << '}';
        }
        separator = ",\n";
    }
    std::cout << "]}\n";
}

void WriteFaults(const quillet::macro::FileExpansion& expansion) {
    for (const quillet::macro::Fault& fault : expansion.faults) {
        std::cerr << ReasonText(fault) << '\n';
    }
    for (const quillet::macro::Call& call : expansion.calls) {
        if (!call.fault) continue;
        std::cerr << "line " << call.line << ": the call of " << call.name
                  << " is left: " << ReasonText(*call.fault) << '\n';
    }
}

bool ReadArguments(const std::vector<std::string>& words, Arguments& arguments) {
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (words[i] == "--json") {
            arguments.json = true;
        } else if (words[i] == "--batch") {
            arguments.layout.batchMode = true;
        } else if (words[i] == "--end-at-blank-lines") {
            arguments.layout.endAtBlankLines = true;
        } else if (words[i] == "--folder" && i + 1 < words.size()) {
            arguments.folder = words[++i];
        } else if (!words[i].starts_with("--") && arguments.fileName.empty()) {
            arguments.fileName = words[i];
        } else {
            return false;
        }
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    Arguments arguments;
    if (!ReadArguments({argv + 1, argv + argc}, arguments)) {
        std::cerr << "usage: expandmacros [--json] [--batch] [--end-at-blank-lines]"
                     " [--folder FOLDER] [file]\n";
        return 2;
    }
    quillet::macro::ExpansionOptions options;
    std::string text;
    if (arguments.fileName.empty()) {
        text = ReadAll(std::cin);
    } else if (!ReadFile(arguments.fileName, text)) {
        std::cerr << "cannot open " << arguments.fileName << '\n';
        return 2;
    } else {
        std::error_code error;
        options.fileName = fs::weakly_canonical(arguments.fileName, error).string();
    }
    const CodePage& codePage = CodePageOf(text);
    options.pCodePage = &codePage;
    options.layout = arguments.layout;
    FileSystemResolver resolver(arguments.layout, arguments.folder);
    const quillet::macro::FileExpansion expansion = ExpandFile(text, options, &resolver);
    WriteFaults(expansion);
    if (arguments.json) {
        WriteJson(codePage, expansion);
    } else {
        std::cout << ExpandedText(text, expansion);
    }
    return 0;
}
