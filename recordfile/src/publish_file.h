// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef RECORDFILE_SRC_PUBLISH_FILE_H
#define RECORDFILE_SRC_PUBLISH_FILE_H

#include <QString>

QT_BEGIN_NAMESPACE
class QFileDevice;
QT_END_NAMESPACE

namespace Velk {

/// The result of giving a file its final name.
struct PublishResult
{
    enum Outcome
    {
        Published,
        Exists,       ///< a file has the name already, and was not to be replaced
        MustBeCopied, ///< the two names are on different file systems, or the file has lost its own name
        Failed
    };

    Outcome outcome = Failed;
    QString reason; ///< of Failed: the text of the system
};

/// Gives the file `from` the name `to` on the same file system, in one step: other processes see no file or the whole
/// file. Without `replace` it never replaces a file, not even one that another process creates at the same moment.
PublishResult publishFile(const QString& from, const QString& to, bool replace);

/// Writes the first `size` bytes of the open file `from`, from its position on, to a new file beside `to`, gives that
/// file the permissions `mode`, and then the name `to` like publishFile(). Leaves no file behind when it fails.
PublishResult publishCopy(QFileDevice& from, qint64 size, const QString& to, int mode, bool replace);

/// Writes to the disk what the system still buffers of the open file.
bool syncToDisk(QFileDevice& file);

/// Sets the permissions of the open file, as far as its file system has any.
void setPublishedMode(QFileDevice& file, int mode);

/// The permissions that a file gets at `path`: those of the file that is there, otherwise those of a new file.
int publishedMode(const QString& path);

} // namespace Velk

#endif
