#ifndef RECORDFILE_SRC_PUBLISH_FILE_H
#define RECORDFILE_SRC_PUBLISH_FILE_H

#include <QString>

QT_BEGIN_NAMESPACE
class QFileDevice;
QT_END_NAMESPACE

namespace Velk {

/// What became of giving a file its final name.
struct PublishResult
{
    enum Outcome
    {
        Published,
        Exists,       ///< the name is taken, and was not to be replaced
        MustBeCopied, ///< the two names are on different file systems, or the file has lost its own name
        Failed
    };

    Outcome outcome = Failed;
    int errorNumber = 0; ///< of Failed
};

/// Gives the file `from` the name `to` on the same file system, in one step: others see no file or the whole one. Never
/// replaces a file when `replace` is false, also one that another process creates at the same moment.
PublishResult publishFile(const QString& from, const QString& to, bool replace);

/// Writes what the system still buffers for the open file to the disk.
bool syncToDisk(QFileDevice& file);

/// Gives the open file the permissions of a file that the user creates, or those of the file `mode` was read from.
void setPublishedMode(QFileDevice& file, int mode);

/// The permissions of the file at `path`; those of a new file when there is none.
int publishedMode(const QString& path);

} // namespace Velk

#endif
