// Shows how a TABLES command is parsed: a developer's tool.
//
//     dumptables [-t] [file]
//
// Reads one command from the file or from standard input, with or without its closing period,
// and writes the parse tree, each node with its type code and token, or the report that ended
// the parse. "-t" writes the tokens and reports on standard error as they come; where the
// parser was built with TBTRYYDEBUG=1, its own steps as well.

#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <string_view>

#include "bison/tbtrtables.h"
#include "driver/reasons.h"
#include "parser/tbtrtablescommand.h"
#include "platform/codepage.h"
#include "tokenizer/parseerror.h"
#include "tokenizer/tavqtokensequence.h"

namespace {

using quillet::CodePage;

const CodePage& CodePageOf(std::string_view text) {
    quillet::Utf8Validator validator;
    const bool mayBeUtf8 = validator.Add(text);
    return mayBeUtf8 && validator.IsValid() ? CodePage::Utf8() : CodePage::Windows1252();
}

// A period is found by the line end after it, which a text given on the fly may lack.
std::string WithoutTerminator(const CodePage& codePage, std::string text) {
    text += '\n';
    const std::ptrdiff_t end =
        quillet::TAVQTokenSequence::FindCommandEnd(codePage, text, /*isFreeText=*/false);
    if (end >= 0) text.resize(static_cast<std::size_t>(end));
    return text;
}

int DumpCommand(std::string text, bool trace) {
    const CodePage& codePage = CodePageOf(text);
    text = WithoutTerminator(codePage, std::move(text));
    quillet::TAVQTokenSequence sequence(codePage, text, /*skipLeadingSign=*/false,
                                        /*maxTokens=*/0);
    quillet::TablesCommand command(codePage, &sequence);
    if (trace) command.SetTrace(&std::cerr);
    const quillet::ParseStatus status = quillet::ParseTables(command);

    for (const quillet::Warning& warning : command.Warnings())
        std::cout << "warning: " << quillet::MessageOf(warning) << '\n';
    if (status == quillet::ParseStatus::kSuccess) {
        command.ParseResult()->Dump(std::cout, 0);
        return 0;
    }
    const quillet::ReportEntry report = command.FirstReport();
    std::cout << "status " << static_cast<int>(status) << ", kind " << static_cast<int>(report.kind)
              << ", line " << report.line << ", column " << report.column << ", subcommand "
              << report.subcommand << " (" << quillet::TablesCommand::NameOfCode(report.subcommand)
              << ")\n";
    return 1;
}

std::string ReadAll(std::istream& stream) {
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

}  // namespace

int main(int argc, char** argv) {
    bool trace = false;
    std::string fileName;
    for (int index = 1; index < argc; ++index) {
        const std::string_view argument = argv[index];
        if (argument == "-t") {
            trace = true;
        } else {
            fileName = argument;
        }
    }
    std::string text;
    if (fileName.empty()) {
        text = ReadAll(std::cin);
    } else {
        std::ifstream file(fileName, std::ios::binary);
        if (!file) {
            std::cerr << "cannot open " << fileName << '\n';
            return 2;
        }
        text = ReadAll(file);
    }
    try {
        return DumpCommand(std::move(text), trace);
    } catch (const quillet::ParseError& error) {
        std::cout << "tokenizing error " << static_cast<int>(error.Kind()) << ", line "
                  << error.Line() << ", column " << error.Column() << '\n';
        return 1;
    }
}
