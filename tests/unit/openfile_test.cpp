// Files that are held open. This runs on POSIX systems alone.
#include "platform/openfile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <system_error>

#include "platform/folder.h"

namespace quillet {
namespace {

// A folder with a file in it that can be written to, which goes away with the test.
class OpenFileTest : public testing::Test {
protected:
    void SetUp() override {
        std::string name =
            (std::filesystem::temp_directory_path() / "quillet-openfile-XXXXXX").string();
        m_path = mkdtemp(name.data());
        std::ofstream(m_path / "file") << "0123456789";
        m_file = Open();
        ASSERT_TRUE(m_file.IsOpen());
    }
    void TearDown() override { std::filesystem::remove_all(m_path); }

    [[nodiscard]] FileDescriptor Open() const {
        std::error_code error;
        const std::shared_ptr<const Folder> folder = Folder::Open(m_path.string(), error);
        return folder->OpenFile("file", FileAccess::kAppend, error);
    }
    [[nodiscard]] std::string Contents() const {
        std::ostringstream content;
        content << std::ifstream(m_path / "file").rdbuf();
        return content.str();
    }

    std::filesystem::path m_path;
    FileDescriptor m_file;
};

TEST_F(OpenFileTest, OpensWhatTheUserNames) {
    std::error_code error;
    std::filesystem::create_symlink("file", m_path / "link");
    EXPECT_TRUE(OpenNamedFile((m_path / "link").string(), error).IsOpen());
    EXPECT_FALSE(error);
    // Nobody writes into it, and nobody waits for that.
    ASSERT_EQ(mkfifo((m_path / "pipe").c_str(), S_IRWXU), 0);
    EXPECT_TRUE(OpenNamedFile((m_path / "pipe").string(), error).IsOpen());
    EXPECT_FALSE(OpenNamedFile((m_path / "missing").string(), error).IsOpen());
    EXPECT_EQ(error, std::errc::no_such_file_or_directory);
}

TEST_F(OpenFileTest, ReadsAtAnyPlace) {
    std::error_code error;
    const FileDescriptor file = OpenNamedFile((m_path / "file").string(), error);
    std::string text(4, '-');
    EXPECT_EQ(ReadAt(file, 3, text.data(), text.size()), 4);
    EXPECT_EQ(text, "3456");
    EXPECT_EQ(ReadAt(file, 8, text.data(), text.size()), 2);
    EXPECT_EQ(text, "8956");
    EXPECT_EQ(ReadAt(file, 10, text.data(), text.size()), 0);
    EXPECT_EQ(ReadAt(m_file, 0, text.data(), text.size()), -1);  // it was opened to be written
    EXPECT_EQ(LastError(), std::errc::bad_file_descriptor);
}

TEST_F(OpenFileTest, WritesAndCuts) {
    std::error_code error;
    EXPECT_TRUE(WriteAll(m_file, "abc", error));
    EXPECT_EQ(Contents(), "0123456789abc");
    EXPECT_TRUE(SetSize(m_file, 2));
    EXPECT_EQ(Contents(), "01");
    const FileDescriptor file = OpenNamedFile((m_path / "file").string(), error);
    EXPECT_FALSE(SetSize(file, 1));
    EXPECT_TRUE(WriteAll(file, "", error));
    EXPECT_FALSE(WriteAll(file, "abc", error));
    EXPECT_EQ(error, std::errc::bad_file_descriptor);
}

TEST_F(OpenFileTest, GivesExactlyTheRightsThatAreAskedFor) {
    std::error_code error;
    const mode_t mask = umask(077);
    EXPECT_TRUE(SetPermissions(m_file, 0664, error));
    umask(mask);
    FileStatus status;
    ASSERT_TRUE(ReadStatusOf(m_file, status, error));
    EXPECT_EQ(status.permissions, 0664U);
}

TEST_F(OpenFileTest, LocksKeepOthersOut) {
    FileDescriptor other = Open();
    EXPECT_TRUE(IsUnlocked(other));
    EXPECT_TRUE(TryLock(m_file));
    EXPECT_FALSE(IsUnlocked(other));
    EXPECT_FALSE(TryLock(other));
    ASSERT_TRUE(m_file.Close());
    EXPECT_TRUE(IsUnlocked(other));
    // To have asked is no lock.
    const FileDescriptor third = Open();
    EXPECT_TRUE(TryLock(third));
    EXPECT_FALSE(TryLock(other));
}

}  // namespace
}  // namespace quillet
