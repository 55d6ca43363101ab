#include "plugins/sources/process/ProcessGroup.h"

#include "plugins/sources/process/FileDescriptor.h"

#include <array>
#include <cctype>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#include <dirent.h>
#include <fcntl.h>

namespace norvo {

namespace {

struct DirectoryCloser
{
    void operator()(DIR* directory) const { ::closedir(directory); }
};

/// `stat` is the text of /proc/<pid>/stat: "7 (any name) S 1 7 ...", the group in fifth place.
bool isLiveMember(const char* stat, pid_t group)
{
    const char* const afterName = std::strrchr(stat, ')');
    char state = 0;
    int parent = 0;
    int itsGroup = 0;
    return afterName && std::sscanf(afterName + 1, " %c %d %d", &state, &parent, &itsGroup) == 3 &&
           itsGroup == group && state != 'Z' && state != 'X';
}

} // namespace

bool isGroupAlive(pid_t group)
{
    if (::kill(-group, 0) != 0) {
        return false;
    }
    const std::unique_ptr<DIR, DirectoryCloser> processes(::opendir("/proc"));
    if (!processes) {
        return true;
    }
    while (const dirent* const entry = ::readdir(processes.get())) {
        if (!std::isdigit(static_cast<unsigned char>(entry->d_name[0]))) {
            continue;
        }
        const std::string path = std::string("/proc/") + entry->d_name + "/stat";
        const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
        std::array<char, 512> stat;
        const ssize_t count = file.isOpen() ? ::read(file.get(), stat.data(), stat.size() - 1) : 0;
        stat[size_t(count > 0 ? count : 0)] = '\0';
        if (isLiveMember(stat.data(), group)) {
            return true;
        }
    }
    return false;
}

} // namespace norvo
