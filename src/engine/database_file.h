#pragma once

#include <QString>
#include <compare>
#include <map>
#include <memory>
#include <vector>

namespace engine {

// Throws JetError 3343 naming the path and what it is when it names something other than a
// regular file (a folder, a device, a FIFO, a socket), before anything opens it; 3024 when
// nothing is there. A symbolic link is judged by what it points to.
void requireRegularFile(const QString& path);
// For a file about to be created: nothing may be there yet. Throws JetError 3204, whose
// description says what is there when it is no regular file.
void requireNewFile(const QString& path);

// This process's use of one database file, shared by every connection the process has on it.
// Users of the file between them hold an open file description of it with a lock on one byte
// that SQLite never locks (an open-file-description lock, so it neither disturbs SQLite's own
// locks nor is dropped when SQLite closes its descriptors): shared by every reader and writer,
// exclusive while the file is repaired, copied and replaced by its compacted copy. Whoever
// replaced the file, a use taken afterwards is of the file the path names then.
class FileUse {
  public:
    // Shared use of the file the path names. Waits while another process uses it exclusively
    // (a compaction takes seconds), and gives up after a while with JetError 3045. The process's
    // own use of the file, shared or exclusive, is shared.
    static std::shared_ptr<FileUse> share(const QString& path);
    // Exclusive use, without waiting: JetError 3045 naming the file when any process, this one
    // included, uses it. Connections this process opens on the file meanwhile share this use.
    static std::shared_ptr<FileUse> takeExclusive(const QString& path);

    ~FileUse();
    FileUse(const FileUse&) = delete;
    FileUse& operator=(const FileUse&) = delete;

  private:
    // A file as the system knows it, whatever its path.
    struct Identity {
        unsigned long long device = 0;
        unsigned long long inode = 0;
        auto operator<=>(const Identity&) const = default;
    };

    FileUse(int descriptor, Identity identity);
    static std::shared_ptr<FileUse> tryShare(const QString& path);
    static std::shared_ptr<FileUse> registered(Identity identity);
    static std::shared_ptr<FileUse> enter(int descriptor, Identity identity);
    static void release(int descriptor, Identity identity);
    static bool lockOrRelease(int descriptor, Identity identity, short type, const QString& path);
    static Identity identityOf(const QString& path);  // {} when there is nothing
    static Identity identityOf(int descriptor);
    static std::map<Identity, std::weak_ptr<FileUse>>& uses();

    int descriptor_;
    Identity identity_;
    std::vector<int> strayDescriptors_;  // of the same file, closed with the use
};

}  // namespace engine
