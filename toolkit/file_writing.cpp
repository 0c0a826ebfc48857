#include "toolkit/file_writing.h"

#include <fcntl.h>
#include <glib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <system_error>

namespace toolkit {

namespace {

std::string Sentence(const std::string& path, int error) {
    return "warning: " + ShownName(path) +
           " was not written: " + std::generic_category().message(error);
}

// Writes everything and sees to it that it is on the disk. Returns 0 or the number of the error.
int WriteAll(int file, std::string_view contents) {
    while (!contents.empty()) {
        const ssize_t written = write(file, contents.data(), contents.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return errno;
        contents.remove_prefix(static_cast<std::size_t>(written));
    }
    return fsync(file) == 0 ? 0 : errno;
}

// The rights of the file that stands there, or those that a new one gets; never those to become
// another user or group, which were given to other contents.
mode_t RightsFor(const std::string& path) {
    struct stat old {};
    if (stat(path.c_str(), &old) == 0) return old.st_mode & static_cast<mode_t>(0777);
    const mode_t mask = umask(0);
    umask(mask);
    return static_cast<mode_t>(0666) & ~mask;
}

// Where symbolic links lead, also when nothing stands there yet.
std::string TargetOf(const std::string& path) {
    constexpr int mostLinks = 40;  // as the system has it
    std::filesystem::path target = path;
    std::error_code noLink;
    for (int i = 0; i < mostLinks; ++i) {
        const std::filesystem::path next = std::filesystem::read_symlink(target, noLink);
        if (noLink) break;
        target = target.parent_path() / next;
    }
    return target.string();
}

// The error that replacing what stands at `path` would be; 0 where it may be replaced.
int Obstacle(const std::string& path) {
    struct stat old {};
    if (stat(path.c_str(), &old) != 0) return errno == ENOENT ? 0 : errno;
    if (S_ISDIR(old.st_mode)) return EISDIR;
    if (!S_ISREG(old.st_mode)) {
        return ENOTSUP;  // a device would become a file
    }
    return access(path.c_str(), W_OK) == 0 ? 0 : errno;
}

}  // namespace

std::optional<std::string> WriteFile(const std::string& path, std::string_view contents) {
    const std::string target = TargetOf(path);
    if (const int error = Obstacle(target); error != 0) return Sentence(path, error);
    const std::filesystem::path folder = std::filesystem::path(target).parent_path();
    std::string temporary = (folder / ".unfinished-XXXXXX").string();
    const int file = mkstemp(temporary.data());
    if (file < 0) return Sentence(path, errno);
    int error = WriteAll(file, contents);
    if (error == 0 && fchmod(file, RightsFor(target)) != 0) {
        error = errno;
    }
    if (close(file) != 0 && error == 0) {
        error = errno;
    }
    if (error == 0 && std::rename(temporary.c_str(), target.c_str()) != 0) {
        error = errno;
    }
    if (error != 0) {
        unlink(temporary.c_str());
        return Sentence(path, error);
    }
    return std::nullopt;
}

std::string ShownName(const std::string& path) {
    const std::unique_ptr<char, decltype(&g_free)> name(g_filename_display_basename(path.c_str()),
                                                        &g_free);
    return name.get();
}

}  // namespace toolkit
