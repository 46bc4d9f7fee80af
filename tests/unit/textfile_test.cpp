#include "platform/textfile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <ios>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace {
int g_untoldDescriptor = -1;
}  // namespace

// Takes the place of the system's function in this program, so that it can fail on demand.
extern "C" int fstat(int descriptor, struct stat* pStatus) noexcept {
    if (descriptor == g_untoldDescriptor) {
        errno = EIO;
        return -1;
    }
    return fstatat(descriptor, "", pStatus, AT_EMPTY_PATH);
}

namespace quillet {
namespace {

using namespace std::string_literals;

// A folder for the files of one test.
class TextFileTest : public testing::Test {
protected:
    TextFileTest() : m_folder(testing::TempDir() + "quillet-textfile-" + std::to_string(getpid())) {
        std::filesystem::remove_all(m_folder);
        std::filesystem::create_directories(m_folder);
    }
    ~TextFileTest() override { std::filesystem::remove_all(m_folder); }

    [[nodiscard]] std::string Path(const std::string& name) const { return m_folder + "/" + name; }

    std::string Create(const std::string& name, std::string_view text) const {
        std::string path = Path(name);
        std::ofstream(path, std::ios::binary) << text;
        return path;
    }

    [[nodiscard]] static std::string Contents(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

private:
    std::string m_folder;
};

std::string ReadAll(TextInput& input, std::size_t size = 4096) {
    std::string text;
    std::vector<char> buffer(size);
    while (const std::size_t length = input.Read(buffer.data(), buffer.size())) {
        text.append(buffer.data(), length);
    }
    return text;
}

std::string ReadSome(TextInput& input, std::size_t size) {
    std::string text(size, '\0');
    std::size_t done = 0;
    while (done < size) {
        const std::size_t length = input.Read(text.data() + done, size - done);
        if (length == 0) break;
        done += length;
    }
    text.resize(done);
    return text;
}

// Both ends of a pipe; the reading end has a name that can be opened.
class Pipe {
public:
    Pipe() {
        int ends[2];
        if (pipe(ends) != 0) return;
        m_reader = FileDescriptor(ends[0]);
        m_writer = FileDescriptor(ends[1]);
    }

    [[nodiscard]] std::string ReaderName() const {
        return "/dev/fd/" + std::to_string(m_reader.Get());
    }
    [[nodiscard]] std::string WriterName() const {
        return "/dev/fd/" + std::to_string(m_writer.Get());
    }
    void CloseReader() { m_reader = FileDescriptor(); }
    void CloseWriter() { m_writer = FileDescriptor(); }

    // Writes all of `text` and closes the end.
    void Feed(std::string_view text) {
        while (!text.empty()) {
            const ssize_t length = write(m_writer.Get(), text.data(), text.size());
            if (length <= 0) break;
            text.remove_prefix(static_cast<std::size_t>(length));
        }
        CloseWriter();
    }
    [[nodiscard]] std::string Drain() {
        std::string text;
        char buffer[4096];
        for (ssize_t length = 0; (length = read(m_reader.Get(), buffer, sizeof buffer)) > 0;) {
            text.append(buffer, static_cast<std::size_t>(length));
        }
        return text;
    }

private:
    FileDescriptor m_reader;
    FileDescriptor m_writer;
};

bool IsOpen(int descriptor) { return fcntl(descriptor, F_GETFD) != -1; }

TEST_F(TextFileTest, ADescriptorIsClosedWithItsObject) {
    const std::string path = Create("a", "");
    int number = -1;
    {
        const FileDescriptor descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC));
        ASSERT_TRUE(descriptor.IsOpen());
        number = descriptor.Get();
        EXPECT_TRUE(IsOpen(number));
    }
    EXPECT_FALSE(IsOpen(number));
    EXPECT_FALSE(FileDescriptor().IsOpen());
}

TEST_F(TextFileTest, ADescriptorMoves) {
    const std::string path = Create("a", "");
    int number = -1;
    int replaced = -1;
    {
        FileDescriptor first(open(path.c_str(), O_RDONLY | O_CLOEXEC));
        number = first.Get();
        FileDescriptor second(std::move(first));
        EXPECT_EQ(second.Get(), number);
        FileDescriptor third(open(path.c_str(), O_RDONLY | O_CLOEXEC));
        replaced = third.Get();
        third = std::move(second);
        EXPECT_EQ(third.Get(), number);
        EXPECT_TRUE(IsOpen(number));
    }
    EXPECT_FALSE(IsOpen(number));
    EXPECT_FALSE(IsOpen(replaced));
}

TEST_F(TextFileTest, ADescriptorIsClosedOnce) {
    FileDescriptor descriptor(open(Create("a", "").c_str(), O_RDONLY | O_CLOEXEC));
    const int number = descriptor.Get();
    EXPECT_TRUE(descriptor.Close());
    EXPECT_FALSE(descriptor.IsOpen());
    EXPECT_FALSE(IsOpen(number));
    // The number now belongs to another file, which the emptied object must leave alone.
    const FileDescriptor other(open(Create("b", "").c_str(), O_RDONLY | O_CLOEXEC));
    ASSERT_EQ(other.Get(), number);
    descriptor = FileDescriptor();
    EXPECT_TRUE(IsOpen(number));
}

TEST_F(TextFileTest, ReadsAFile) {
    for (const std::string& text : {""s, "a"s, "a\r\nb\0c\xFF\n"s, std::string(1000000, 'x')}) {
        SCOPED_TRACE(text.size());
        const std::unique_ptr<FileInput> input = FileInput::Open(Create("in", text));
        ASSERT_NE(input, nullptr);
        EXPECT_TRUE(ReadAll(*input) == text);
        EXPECT_EQ(ReadAll(*input), "") << "the end stays the end";
        ASSERT_TRUE(input->Rewind());
        EXPECT_EQ(ReadSome(*input, 1), text.substr(0, 1));
        ASSERT_TRUE(input->Rewind());
        EXPECT_TRUE(ReadAll(*input, 7) == text);
        EXPECT_FALSE(input->Failed());
    }
}

TEST_F(TextFileTest, ReadsAPipeTwice) {
    for (const std::string& text : {""s, "a\nb\n"s, std::string(3000000, 'x') + "end"}) {
        SCOPED_TRACE(text.size());
        Pipe pipe;
        const std::unique_ptr<FileInput> input = FileInput::Open(pipe.ReaderName());
        ASSERT_NE(input, nullptr);
        std::thread writer([&] { pipe.Feed(text); });
        EXPECT_TRUE(ReadAll(*input) == text);
        writer.join();
        for (int pass = 0; pass < 2; ++pass) {
            ASSERT_TRUE(input->Rewind());
            EXPECT_TRUE(ReadAll(*input) == text);
        }
        EXPECT_FALSE(input->Failed());
    }
}

TEST_F(TextFileTest, APipeCanBeRewoundBeforeItsEnd) {
    std::string text;
    for (int i = 0; i < 50000; ++i) text += std::to_string(i) + "\n";
    for (const std::size_t before : {std::size_t{0}, std::size_t{10}, std::size_t{100000}}) {
        SCOPED_TRACE(before);
        Pipe pipe;
        const std::unique_ptr<FileInput> input = FileInput::Open(pipe.ReaderName());
        ASSERT_NE(input, nullptr);
        std::thread writer([&] { pipe.Feed(text); });
        EXPECT_TRUE(ReadSome(*input, before) == text.substr(0, before));
        EXPECT_TRUE(input->Rewind());
        EXPECT_TRUE(ReadAll(*input) == text);
        EXPECT_FALSE(input->Failed());
        pipe.CloseReader();
        writer.join();
    }
}

TEST_F(TextFileTest, ReadsANamedPipe) {
    const std::string path = Path("fifo");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    std::thread writer([&path] { std::ofstream(path) << "LIST x.\n"; });
    const std::unique_ptr<FileInput> input = FileInput::Open(path);
    ASSERT_NE(input, nullptr);
    EXPECT_EQ(ReadAll(*input), "LIST x.\n");
    writer.join();
    EXPECT_TRUE(input->Rewind());
    EXPECT_EQ(ReadAll(*input), "LIST x.\n");
}

// Both passes over an input must see the same text, whoever writes into the pipe in between.
TEST_F(TextFileTest, TheEndOfAPipeStaysItsEnd) {
    const std::string path = Path("fifo");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    std::thread writer([&path] { std::ofstream(path) << "LIST x.\n"; });
    const std::unique_ptr<FileInput> input = FileInput::Open(path);
    ASSERT_NE(input, nullptr);
    EXPECT_EQ(ReadAll(*input), "LIST x.\n");
    writer.join();
    std::ofstream(path) << "LIST y.\n";
    EXPECT_TRUE(input->Rewind());
    EXPECT_EQ(ReadAll(*input), "LIST x.\n");
}

TEST_F(TextFileTest, ReadsADevice) {
    const std::unique_ptr<FileInput> input = FileInput::Open("/dev/null");
    ASSERT_NE(input, nullptr);
    EXPECT_EQ(ReadAll(*input), "");
    EXPECT_TRUE(input->Rewind());
    EXPECT_EQ(ReadAll(*input), "");
    EXPECT_FALSE(input->Failed());
}

TEST_F(TextFileTest, OpensNoFolderAndNothingThatIsNotThere) {
    EXPECT_EQ(FileInput::Open(Path("nothing")), nullptr);
    EXPECT_EQ(FileInput::Open(Path("nothing/nothing")), nullptr);
    EXPECT_EQ(FileInput::Open(Path("")), nullptr);
    EXPECT_EQ(FileInput::Open(""), nullptr);
    EXPECT_EQ(FileInput::Open(Create("file", "") + "/x"), nullptr);
}

// The own memory is a file whose reading fails where nothing is mapped, as at its beginning.
TEST_F(TextFileTest, TellsAReadError) {
    const std::unique_ptr<FileInput> input = FileInput::Open("/proc/self/mem");
    if (input == nullptr) GTEST_SKIP() << "no file whose reading fails";
    EXPECT_FALSE(input->Failed());
    char buffer[16];
    EXPECT_EQ(input->Read(buffer, sizeof buffer), 0U);
    EXPECT_TRUE(input->Failed());
}

// Every file is opened, read, treated so and read again.
struct ChangeCase {
    const char* name;
    void (*change)(const std::string& path);
    bool isSeen = true;
};

void SetTimes(const std::string& path, time_t modified) {
    const timespec times[] = {{modified, 0}, {modified, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
}

timespec ChangeTimeOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0);
    return status.st_ctim;
}

// The clock of a file system stands still for some milliseconds at a time: returns once a change
// of `path` would get another time than its last one.
void WaitForANewTime(const std::string& path) {
    const timespec last = ChangeTimeOf(path);
    const std::string probe = path + ".probe";
    timespec now = last;
    while (now.tv_sec == last.tv_sec && now.tv_nsec == last.tv_nsec) {
        std::filesystem::remove(probe);
        static_cast<void>(std::ofstream(probe));
        now = ChangeTimeOf(probe);
    }
}

TEST_F(TextFileTest, TellsThatAFileWasChanged) {
    constexpr time_t kLongAgo = 1'000'000'000;
    const ChangeCase cases[] = {
        {"nothing", [](const std::string&) {}, false},
        {"read by someone else", [](const std::string& path) { EXPECT_NE(Contents(path), ""); },
         false},
        {"cut", [](const std::string& path) { std::filesystem::resize_file(path, 3); }},
        {"lengthened",
         [](const std::string& path) { std::ofstream(path, std::ios::app) << "LIST y.\n"; }},
        {"written over", [](const std::string& path) { std::ofstream(path) << "LIST y.\n"; }},
        {"written over, with its time set back",
         [](const std::string& path) {
             std::ofstream(path) << "LIST y.\n";
             SetTimes(path, kLongAgo);
         }},
    };
    for (const ChangeCase& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string path = Create("in", "LIST x.\n");
        SetTimes(path, kLongAgo);
        const std::unique_ptr<FileInput> input = FileInput::Open(path);
        ASSERT_NE(input, nullptr);
        EXPECT_EQ(ReadAll(*input), "LIST x.\n");
        EXPECT_FALSE(input->HasChanged());
        WaitForANewTime(path);
        c.change(path);
        ASSERT_TRUE(input->Rewind());
        ReadAll(*input);
        EXPECT_EQ(input->HasChanged(), c.isSeen);
        EXPECT_FALSE(input->Failed());
    }
}

TEST_F(TextFileTest, WhatIsNoFileDoesNotChange) {
    const std::unique_ptr<FileInput> device = FileInput::Open("/dev/null");
    ASSERT_NE(device, nullptr);
    EXPECT_FALSE(device->HasChanged());
    Pipe pipe;
    const std::unique_ptr<FileInput> input = FileInput::Open(pipe.ReaderName());
    ASSERT_NE(input, nullptr);
    pipe.Feed("LIST x.\n");
    EXPECT_EQ(ReadAll(*input), "LIST x.\n");
    EXPECT_FALSE(input->HasChanged());
}

// The number that the next file opened will get.
int NextDescriptor() { return FileDescriptor(open("/dev/null", O_RDONLY | O_CLOEXEC)).Get(); }

// For as long as this lives, the system does not tell what one descriptor is.
class UntoldStatus {
public:
    explicit UntoldStatus(int descriptor) { g_untoldDescriptor = descriptor; }
    ~UntoldStatus() { g_untoldDescriptor = -1; }
    UntoldStatus(const UntoldStatus&) = delete;
    UntoldStatus& operator=(const UntoldStatus&) = delete;
};

TEST_F(TextFileTest, OpensNoInputOfWhichNothingIsKnown) {
    const std::string path = Create("in", "LIST x.\n");
    const UntoldStatus untold(NextDescriptor());
    EXPECT_EQ(FileInput::Open(path), nullptr);
}

TEST_F(TextFileTest, OpensNoOutputOfWhichNothingIsKnown) {
    const std::string path = Create("in", "LIST x.\n");
    const std::string other = Create("out", "a longer text, whose end must not stay behind\n");
    const std::unique_ptr<FileInput> input = FileInput::Open(path);
    ASSERT_NE(input, nullptr);
    for (const std::string& name : {path, other}) {
        const std::string before = Contents(name);
        const UntoldStatus untold(NextDescriptor());
        EXPECT_EQ(FileOutput::Open(name, *input), nullptr);
        EXPECT_EQ(Contents(name), before);
    }
    const UntoldStatus untold(STDOUT_FILENO);
    EXPECT_EQ(FileOutput::Open(other, *input), nullptr);
    EXPECT_NE(Contents(other), "");
}

TEST_F(TextFileTest, AnInputOfWhichNothingMoreIsKnownHasChanged) {
    const std::string path = Create("in", "LIST x.\n");
    const int descriptor = NextDescriptor();
    const std::unique_ptr<FileInput> input = FileInput::Open(path);
    ASSERT_NE(input, nullptr);
    EXPECT_FALSE(input->HasChanged());
    const UntoldStatus untold(descriptor);
    EXPECT_TRUE(input->HasChanged());
}

TEST_F(TextFileTest, WritesAFile) {
    const std::unique_ptr<FileInput> input = FileInput::Open(Create("in", "x"));
    ASSERT_NE(input, nullptr);
    const std::string large(3000000, 'y');
    for (const std::string& before : {""s, "a longer text than that which replaces it"s}) {
        const std::string path = Create("out", before);
        const std::unique_ptr<FileOutput> output = FileOutput::Open(path, *input);
        ASSERT_NE(output, nullptr);
        EXPECT_FALSE(output->IsStandardOutput());
        EXPECT_TRUE(output->Write("a\r\n"));
        EXPECT_TRUE(output->Write(""));
        EXPECT_TRUE(output->Write("\0\xFF"s));
        EXPECT_TRUE(output->Close());
        EXPECT_EQ(Contents(path), "a\r\n\0\xFF"s);
    }
    const std::unique_ptr<FileOutput> output = FileOutput::Open(Path("new"), *input);
    ASSERT_NE(output, nullptr);
    EXPECT_TRUE(output->Write(large));
    EXPECT_TRUE(output->Close());
    EXPECT_TRUE(Contents(Path("new")) == large);
}

TEST_F(TextFileTest, OpeningDiscardsWhatTheFileHeld) {
    const std::unique_ptr<FileInput> input = FileInput::Open(Create("in", "x"));
    ASSERT_NE(input, nullptr);
    const std::string path = Create("out", "old");
    const std::unique_ptr<FileOutput> output = FileOutput::Open(path, *input);
    ASSERT_NE(output, nullptr);
    EXPECT_TRUE(output->Close());
    EXPECT_EQ(Contents(path), "");
}

TEST_F(TextFileTest, OpensNoOutputThatCannotBeWritten) {
    const std::unique_ptr<FileInput> input = FileInput::Open(Create("in", "x"));
    ASSERT_NE(input, nullptr);
    EXPECT_EQ(FileOutput::Open(Path(""), *input), nullptr);
    EXPECT_EQ(FileOutput::Open(Path("nothing/out"), *input), nullptr);
    EXPECT_EQ(FileOutput::Open("", *input), nullptr);
}

TEST_F(TextFileTest, TheInputIsNeverOpenedAsOutput) {
    const std::string path = Create("in", "LIST x.\n");
    std::filesystem::create_symlink(path, Path("symbolic"));
    std::filesystem::create_symlink("symbolic", Path("symbolic2"));
    std::filesystem::create_hard_link(path, Path("hard"));
    for (const char* inputName : {"in", "symbolic", "hard"}) {
        for (const char* outputName :
             {"in", "./in", "symbolic", "symbolic2", "hard", "../quillet-link/in"}) {
            SCOPED_TRACE(inputName + " and "s + outputName);
            const std::filesystem::path link = Path("../quillet-link");
            std::filesystem::remove(link);
            std::filesystem::create_directory_symlink(Path("."), link);
            const std::unique_ptr<FileInput> input = FileInput::Open(Path(inputName));
            ASSERT_NE(input, nullptr);
            EXPECT_EQ(FileOutput::Open(Path(outputName), *input), nullptr);
            EXPECT_EQ(ReadAll(*input), "LIST x.\n");
            std::filesystem::remove(link);
        }
    }
    EXPECT_EQ(Contents(path), "LIST x.\n");
}

TEST_F(TextFileTest, AFileWithTheSameTextIsAnother) {
    const std::unique_ptr<FileInput> input = FileInput::Open(Create("in", "LIST x.\n"));
    ASSERT_NE(input, nullptr);
    EXPECT_NE(FileOutput::Open(Create("out", "LIST x.\n"), *input), nullptr);
}

TEST_F(TextFileTest, ADeviceMayBeBothInputAndOutput) {
    const std::unique_ptr<FileInput> input = FileInput::Open("/dev/null");
    ASSERT_NE(input, nullptr);
    const std::unique_ptr<FileOutput> output = FileOutput::Open("/dev/null", *input);
    ASSERT_NE(output, nullptr);
    EXPECT_TRUE(output->Write("x"));
    EXPECT_TRUE(output->Close());
}

TEST_F(TextFileTest, WritesAPipe) {
    const std::unique_ptr<FileInput> input = FileInput::Open(Create("in", "x"));
    ASSERT_NE(input, nullptr);
    Pipe pipe;
    std::unique_ptr<FileOutput> output = FileOutput::Open(pipe.WriterName(), *input);
    ASSERT_NE(output, nullptr);
    pipe.CloseWriter();
    const std::string text(1000000, 'x');
    std::thread writer([&] {
        EXPECT_TRUE(output->Write(text));
        EXPECT_TRUE(output->Close());
        output.reset();
    });
    EXPECT_TRUE(pipe.Drain() == text);
    writer.join();
}

TEST_F(TextFileTest, TellsAFullDevice) {
    const std::unique_ptr<FileInput> input = FileInput::Open(Create("in", "x"));
    ASSERT_NE(input, nullptr);
    const std::unique_ptr<FileOutput> output = FileOutput::Open("/dev/full", *input);
    if (output == nullptr) GTEST_SKIP() << "this system has no full device";
    const bool hasWritten = output->Write("x");
    EXPECT_FALSE(output->Close() && hasWritten);
}

}  // namespace
}  // namespace quillet
