// Folders that are held open. This runs on POSIX systems alone.
#include "platform/folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace quillet {
namespace {

using testing::ElementsAre;

// A folder with a few things in it, which goes away with the test.
class FolderTest : public testing::Test {
protected:
    void SetUp() override {
        std::string name =
            (std::filesystem::temp_directory_path() / "quillet-folder-XXXXXX").string();
        m_path = mkdtemp(name.data());
        std::filesystem::create_directories(m_path / "a/b/c");
        std::filesystem::create_directory(m_path / "outside");
        std::ofstream(m_path / "outside/file") << "precious";
        std::ofstream(m_path / "a/file") << "text";
        std::filesystem::create_symlink("../outside", m_path / "a/link");
        std::filesystem::create_symlink("../outside/file", m_path / "a/filelink");
        std::error_code error;
        m_folder = Folder::Open((m_path / "a").string(), error);
        ASSERT_TRUE(m_folder) << error.message();
    }
    void TearDown() override { std::filesystem::remove_all(m_path); }

    [[nodiscard]] std::string Contents(const std::string& name) const {
        std::ostringstream content;
        content << std::ifstream(m_path / name).rdbuf();
        return content.str();
    }

    std::filesystem::path m_path;
    std::shared_ptr<const Folder> m_folder;
};

TEST_F(FolderTest, OpensByTheNameThatTheUserGave) {
    std::error_code error;
    const auto folder = Folder::Open((m_path / "a/link").string(), error);
    ASSERT_TRUE(folder);
    std::vector<std::string> names;
    EXPECT_TRUE(folder->List(names, error));
    EXPECT_THAT(names, ElementsAre("file"));
    EXPECT_FALSE(Folder::Open((m_path / "missing").string(), error));
    EXPECT_EQ(error, std::errc::no_such_file_or_directory);
    EXPECT_FALSE(Folder::Open((m_path / "a/file").string(), error));
    EXPECT_EQ(error, std::errc::not_a_directory);
}

TEST_F(FolderTest, ListsMoreThanOnce) {
    for (int time = 0; time < 2; ++time) {
        std::vector<std::string> names;
        std::error_code error;
        EXPECT_TRUE(m_folder->List(names, error));
        EXPECT_THAT(names, ElementsAre("b", "file", "filelink", "link"));
    }
}

TEST_F(FolderTest, EntersNoLink) {
    std::error_code error;
    EXPECT_FALSE(m_folder->OpenFolder("link", error));
    EXPECT_EQ(error, std::errc::too_many_symbolic_link_levels);
    EXPECT_FALSE(m_folder->OpenFolder("filelink", error));
    EXPECT_EQ(error, std::errc::too_many_symbolic_link_levels);
    EXPECT_FALSE(m_folder->OpenFolder("file", error));
    EXPECT_EQ(error, std::errc::not_a_directory);
    std::string obstacle;
    EXPECT_FALSE(m_folder->OpenBelow("link/x/y", obstacle, error));
    EXPECT_EQ(error, std::errc::too_many_symbolic_link_levels);
    EXPECT_EQ(obstacle, "link");
    EXPECT_FALSE(m_folder->OpenBelow("b/c/d/e", obstacle, error));
    EXPECT_EQ(error, std::errc::no_such_file_or_directory);
    EXPECT_EQ(obstacle, "b/c/d");
}

TEST_F(FolderTest, EntersNameByName) {
    std::error_code error;
    std::string obstacle;
    const auto deep = m_folder->OpenBelow("b/c", obstacle, error);
    ASSERT_TRUE(deep);
    const auto middle = deep->OpenParent(error);
    ASSERT_TRUE(middle);
    EXPECT_EQ(middle->Identity(), m_folder->OpenFolder("b", error)->Identity());
    EXPECT_NE(middle->Identity(), deep->Identity());
    EXPECT_EQ(m_folder->OpenBelow("", obstacle, error), m_folder);
}

TEST_F(FolderTest, TakesNamesAndNoPaths) {
    FileStatus status;
    std::string text;
    std::string obstacle;
    for (const std::string name : {"", ".", "..", "b/c", "/", "../outside"}) {
        SCOPED_TRACE(name);
        const auto expectRefusal = [](bool succeeded, const std::error_code& error) {
            EXPECT_FALSE(succeeded);
            EXPECT_EQ(error, std::errc::invalid_argument);
        };
        std::array<std::error_code, 8> errors;
        expectRefusal(m_folder->OpenFolder(name, errors[0]) != nullptr, errors[0]);
        expectRefusal(m_folder->OpenFile(name, FileAccess::kCreate, errors[1]).IsOpen(), errors[1]);
        expectRefusal(m_folder->ReadStatus(name, status, errors[2]), errors[2]);
        expectRefusal(m_folder->ReadLink(name, text, errors[3]), errors[3]);
        expectRefusal(m_folder->MakeFolder(name, errors[4]), errors[4]);
        expectRefusal(m_folder->Rename("file", name, errors[5]), errors[5]);
        expectRefusal(m_folder->Rename(name, "file", errors[6]), errors[6]);
        expectRefusal(m_folder->Remove(name, errors[7]), errors[7]);
    }
    std::error_code error;
    EXPECT_FALSE(m_folder->OpenBelow("b/../../outside", obstacle, error));
    EXPECT_EQ(error, std::errc::invalid_argument);
    EXPECT_FALSE(m_folder->OpenBelow("/tmp", obstacle, error));
    EXPECT_EQ(error, std::errc::invalid_argument);
    EXPECT_EQ(Contents("a/file"), "text");
}

TEST_F(FolderTest, OpensFilesAndNoLinks) {
    std::error_code error;
    EXPECT_TRUE(m_folder->OpenFile("file", FileAccess::kRead, error).IsOpen());
    for (const FileAccess access : {FileAccess::kRead, FileAccess::kAppend}) {
        EXPECT_FALSE(m_folder->OpenFile("filelink", access, error).IsOpen());
        EXPECT_EQ(error, std::errc::too_many_symbolic_link_levels);
    }
    for (const char* name : {"file", "filelink", "b"}) {
        EXPECT_FALSE(m_folder->OpenFile(name, FileAccess::kCreate, error).IsOpen());
        EXPECT_EQ(error, std::errc::file_exists);
    }
    EXPECT_EQ(Contents("outside/file"), "precious");
}

TEST_F(FolderTest, NewFilesAreTheirOwnersAlone) {
    std::error_code error;
    const FileDescriptor file = m_folder->OpenFile("new", FileAccess::kCreate, error);
    ASSERT_TRUE(file.IsOpen());
    FileStatus named;
    FileStatus opened;
    ASSERT_TRUE(m_folder->ReadStatus("new", named, error));
    ASSERT_TRUE(ReadStatusOf(file, opened, error));
    EXPECT_EQ(named.identity, opened.identity);
    EXPECT_EQ(named.permissions, 0600U);
    EXPECT_EQ(named.names, 1U);
    EXPECT_TRUE(SyncContent(file, error)) << error.message();
}

TEST_F(FolderTest, TellsAboutLinksThemselves) {
    FileStatus status;
    std::error_code error;
    ASSERT_TRUE(m_folder->ReadStatus("link", status, error));
    EXPECT_EQ(status.kind, FileKind::kLink);
    std::string text;
    EXPECT_TRUE(m_folder->ReadLink("link", text, error));
    EXPECT_EQ(text, "../outside");
    EXPECT_FALSE(m_folder->ReadLink("file", text, error));
}

TEST_F(FolderTest, RenamesAndRemovesLinksThemselves) {
    std::error_code error;
    EXPECT_TRUE(m_folder->Rename("file", "filelink", error));
    EXPECT_EQ(Contents("a/filelink"), "text");
    EXPECT_TRUE(m_folder->Remove("link", error));
    EXPECT_FALSE(m_folder->Remove("b", error));
    EXPECT_EQ(Contents("outside/file"), "precious");
    EXPECT_FALSE(m_folder->MakeFolder("b", error));
    EXPECT_EQ(error, std::errc::file_exists);
}

TEST_F(FolderTest, StaysWhatItIsWhenItsNameBecomesALink) {
    std::error_code error;
    const auto folder = m_folder->OpenFolder("b", error);
    std::filesystem::rename(m_path / "a/b", m_path / "a/moved");
    std::filesystem::create_symlink("../outside", m_path / "a/b");
    EXPECT_TRUE(folder->OpenFile("new", FileAccess::kCreate, error).IsOpen());
    EXPECT_TRUE(std::filesystem::exists(m_path / "a/moved/new"));
    EXPECT_FALSE(std::filesystem::exists(m_path / "outside/new"));
}

TEST_F(FolderTest, KnowsWhatItLiesIn) {
    std::error_code error;
    std::string obstacle;
    const auto deep = m_folder->OpenBelow("b/c", obstacle, error);
    const auto outside = Folder::Open((m_path / "outside").string(), error);
    EXPECT_TRUE(deep->IsWithin({m_folder->Identity()}, error));
    EXPECT_TRUE(deep->IsWithin({outside->Identity(), deep->Identity()}, error));
    EXPECT_FALSE(m_folder->IsWithin({deep->Identity()}, error));
    EXPECT_FALSE(deep->IsWithin({outside->Identity()}, error));
    EXPECT_FALSE(deep->IsWithin({}, error));
    EXPECT_TRUE(deep->IsWithin({Folder::Open("/", error)->Identity()}, error));
    // Where it lies now counts.
    std::filesystem::rename(m_path / "a/b", m_path / "outside/b");
    EXPECT_TRUE(deep->IsWithin({outside->Identity()}, error));
    EXPECT_FALSE(deep->IsWithin({m_folder->Identity()}, error));
    EXPECT_FALSE(error) << error.message();
}

TEST_F(FolderTest, KnowsWhatItLiesInFarAbove) {
    constexpr int kDepth = 100;
    std::error_code error;
    auto folder = m_folder;
    for (int level = 0; level < kDepth; ++level) {
        ASSERT_TRUE(folder->MakeFolder("d", error));
        folder = folder->OpenFolder("d", error);
        ASSERT_TRUE(folder->IsWithin({m_folder->Identity()}, error)) << level;
    }
    EXPECT_FALSE(folder->IsWithin({m_folder->OpenFolder("b", error)->Identity()}, error));
    EXPECT_FALSE(error) << error.message();
}

}  // namespace
}  // namespace quillet
