// Shows what becomes of the legacy commands in the macros of a syntax file: a developer's tool.
//
//     convertbodies [--json] [--batch] [file]
//
// Reads the file or standard input and writes its text with the bodies converted for which that is
// proven; "--json" writes the verdicts instead. Includes are not followed.

#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <string_view>

#include "quillet.h"

namespace {

struct Arguments {
    bool json = false;
    quillet::MacroOptions options;
    std::string fileName;
};

bool ReadArguments(int argc, char** argv, Arguments& arguments) {
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--json") {
            arguments.json = true;
        } else if (argument == "--batch") {
            arguments.options.conversion.batchMode = true;
        } else if (argument.starts_with("-") || !arguments.fileName.empty()) {
            return false;
        } else {
            arguments.fileName = argument;
        }
    }
    return true;
}

std::string JsonText(std::string_view text) {
    constexpr std::string_view kHexDigits = "0123456789abcdef";
    std::string json = "\"";
    for (const char character : quillet::ToUtf8(text, quillet::TextEncoding::kUtf8)) {
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

std::string_view NameOf(quillet::MacroBodyOutcome outcome) {
    switch (outcome) {
        case quillet::MacroBodyOutcome::kConverted:
            return "converted";
        case quillet::MacroBodyOutcome::kNoCall:
            return "no-call";
        case quillet::MacroBodyOutcome::kDisproved:
            return "disproved";
        case quillet::MacroBodyOutcome::kNotConvertible:
            break;
    }
    return "not-convertible";
}

void WriteJson(const quillet::MacroBodies& result) {
    std::cout << "{\"macros\": [";
    const char* separator = "\n";
    for (const quillet::MacroBody& body : result.bodies) {
        std::cout << separator << "  {\"name\": " << JsonText(body.name)
                  << ", \"firstLine\": " << body.firstLine << ", \"lastLine\": " << body.lastLine
                  << ", \"legacyCommands\": " << body.legacyCommands
                  << ", \"unusedCommands\": " << body.unusedCommands
                  << ", \"outcome\": " << JsonText(NameOf(body.outcome))
                  << ", \"calls\": " << body.calls;
        if (!body.reason.empty()) std::cout << ", \"reason\": " << JsonText(body.reason);
        if (!body.expected.empty() || !body.found.empty()) {
            std::cout << ", \"expected\": " << JsonText(body.expected)
                      << ", \"found\": " << JsonText(body.found);
        }
        std::cout << '}';
        separator = ",\n";
    }
    std::cout << "]}\n";
}

}  // namespace

int main(int argc, char** argv) {
    Arguments arguments;
    if (!ReadArguments(argc, argv, arguments)) {
        std::cerr << "Usage: convertbodies [--json] [--batch] [file]\n";
        return 1;
    }
    std::ifstream file;
    if (!arguments.fileName.empty()) file.open(arguments.fileName, std::ios::binary);
    if (!file) {
        std::cerr << "cannot read " << arguments.fileName << '\n';
        return 1;
    }
    std::istream& input = arguments.fileName.empty() ? std::cin : file;
    const std::string source{std::istreambuf_iterator<char>(input),
                             std::istreambuf_iterator<char>()};
    const quillet::MacroBodies result =
        quillet::ConvertMacroBodies(source, arguments.options, /*outsideCalls=*/{});
    if (arguments.json) {
        WriteJson(result);
    } else {
        std::cout << result.text;
    }
    std::cout.flush();
    return std::cout.good() ? 0 : 1;
}
