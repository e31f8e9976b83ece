#include "LoadedLibrary.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace
{

std::vector<char> versionResource()
{
    const DWORD size = GetFileVersionInfoSizeA("TelvoDll.dll", nullptr);
    std::vector<char> resource(size);
    if (GetFileVersionInfoA("TelvoDll.dll", 0, size, resource.data()) == FALSE) {
        return {};
    }
    return resource;
}

std::string versionText(const std::vector<char>& resource, const std::string& name)
{
    void* text = nullptr;
    UINT size = 0; // characters, the NUL among them
    const std::string path = R"(\StringFileInfo\040904E4\)" + name;
    if (VerQueryValueA(resource.data(), path.c_str(), &text, &size) == FALSE || size == 0) {
        return {};
    }
    return {static_cast<const char*>(text), size - 1};
}

TEST(VersionResource, SaysWhatTheLibraryIs)
{
    const LoadedLibrary library; // found by the same name below
    const std::vector<char> resource = versionResource();
    ASSERT_FALSE(resource.empty()) << "error " << GetLastError();
    EXPECT_EQ(versionText(resource, "OriginalFilename"), "TelvoDll.dll");
    EXPECT_EQ(versionText(resource, "ProductName"), "Telvo");
    EXPECT_EQ(versionText(resource, "FileVersion"), TELVO_VERSION);
    EXPECT_EQ(versionText(resource, "ProductVersion"), TELVO_VERSION);
}

} // namespace
