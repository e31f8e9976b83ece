#include "OutputTarget.h"

#include "Failure.h"

#include <string>
#include <system_error>

namespace telvo
{

namespace
{

namespace fs = std::filesystem;

/// "12.3 MB", rounded down.
std::string megabytes(std::uint64_t bytes)
{
    const std::uint64_t tenths = bytes / 100'000;
    return std::to_string(tenths / 10) + '.' + std::to_string(tenths % 10) + " MB";
}

/// The path itself if it is there, else the folder in which it will be made.
fs::path existingPlace(const fs::path& path)
{
    fs::path place = fs::absolute(path).lexically_normal();
    std::error_code ignored;
    while (!fs::exists(place, ignored) && place.has_relative_path()) {
        place = place.parent_path();
    }
    return place;
}

} // namespace

std::string reasonAndAdvice(const std::error_code& error)
{
    const char* const advice =
        error == std::errc::no_space_on_device          ? "make room or name a place elsewhere"
        : error == std::errc::no_such_file_or_directory ? "make its folder first"
                                                        : "name a place that you may write to";
    return error.message() + "; " + advice;
}

TargetKind kindOf(const fs::path& path)
{
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    switch (status.type()) {
    case fs::file_type::not_found:
        if (fs::is_symlink(fs::symlink_status(path, error))) {
            throw Failure(path.string() + " is a link to what is not there; name another file");
        }
        return TargetKind::Free;
    case fs::file_type::regular:
        return TargetKind::File;
    case fs::file_type::directory:
        return TargetKind::Folder;
    case fs::file_type::none:
        throw Failure("cannot write " + path.string() + ": " + reasonAndAdvice(error));
    default:
        return TargetKind::Stream;
    }
}

void requireWritable(const fs::path& path, IfThere ifThere)
{
    const TargetKind kind = kindOf(path);
    if (kind == TargetKind::Folder) {
        throw Failure(path.string() + " is a folder; name a file in it");
    }
    if (kind == TargetKind::File && ifThere == IfThere::Refuse) {
        throw Failure(path.string() + " is there already; name another file");
    }
    if (kind != TargetKind::File && ifThere == IfThere::Continue) {
        throw Failure("there is no file " + path.string() + " to continue; leave out --resume");
    }
}

void requireSpace(const fs::path& path, std::uint64_t bytes)
{
    std::error_code error;
    const fs::space_info space = fs::space(existingPlace(path), error);
    if (!error && space.available < bytes) {
        throw Failure(path.string() + " takes " + megabytes(bytes) + ", and only " +
                      megabytes(space.available) +
                      " are free there; make room or name a place elsewhere");
    }
}

NewFolder::NewFolder(const fs::path& folder)
{
    std::error_code error;
    for (fs::path place = fs::absolute(folder).lexically_normal();
         !fs::exists(place, error) && place.has_relative_path(); place = place.parent_path()) {
        mMade.push_back(place);
    }
    makeFolder(folder);
}

NewFolder::~NewFolder()
{
    std::error_code hasSomethingInIt;
    for (const fs::path& folder : mMade) {
        fs::remove(folder, hasSomethingInIt);
    }
}

void makeFolder(const fs::path& folder)
{
    std::error_code error;
    fs::create_directories(folder, error);
    if (error) {
        throw Failure("cannot make the folder " + folder.string() + ": " + reasonAndAdvice(error));
    }
}

void requireEmpty(const fs::path& folder)
{
    std::error_code error;
    const bool empty = fs::is_empty(folder, error);
    if (error) {
        throw Failure("cannot look into the folder " + folder.string() + ": " +
                      reasonAndAdvice(error));
    }
    if (!empty) {
        throw Failure("the folder " + folder.string() +
                      " is not empty; name a new one or an empty one");
    }
}

} // namespace telvo
