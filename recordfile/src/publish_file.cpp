// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "publish_file.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <sys/stat.h>
#include <unistd.h>

namespace Velk {

namespace {

constexpr qint64 copyChunkSize = 1 << 20;

QString systemError(int errorNumber)
{
    return QString::fromLocal8Bit(std::strerror(errorNumber));
}

PublishResult failed(int errorNumber, const QString& from)
{
    // A file that was deleted while it was open has no name, but still has its data.
    const bool hasNoName = errorNumber == ENOENT && !QFileInfo::exists(from);
    if (errorNumber == EXDEV || hasNoName)
        return {PublishResult::MustBeCopied, QString()};
    return {PublishResult::Failed, systemError(errorNumber)};
}

bool lacksHardLinks(int errorNumber)
{
    return errorNumber == EPERM || errorNumber == ENOSYS || errorNumber == EOPNOTSUPP || errorNumber == EMLINK;
}

} // namespace

PublishResult publishFile(const QString& from, const QString& to, bool replace)
{
    const QByteArray source = QFile::encodeName(from);
    const QByteArray target = QFile::encodeName(to);
    if (!replace) {
        // rename() replaces a file that has the name; link() fails then.
        if (::link(source.constData(), target.constData()) == 0) {
            ::unlink(source.constData());
            return {PublishResult::Published, QString()};
        }
        if (errno == EEXIST)
            return {PublishResult::Exists, QString()};
        if (!lacksHardLinks(errno))
            return failed(errno, from);
        if (QFileInfo::exists(to))
            return {PublishResult::Exists, QString()};
    }
    if (::rename(source.constData(), target.constData()) == 0)
        return {PublishResult::Published, QString()};
    return failed(errno, from);
}

PublishResult publishCopy(QFileDevice& from, qint64 size, const QString& to, int mode, bool replace)
{
    // Not a QSaveFile: it replaces any file that has the name when the copy is complete.
    QTemporaryFile copy(QFileInfo(to).absolutePath() + QStringLiteral("/.record-XXXXXX"));
    if (!copy.open())
        return {PublishResult::Failed, copy.errorString()};
    const QString copyPath = copy.fileName();
    for (qint64 left = size; left > 0;) {
        const QByteArray bytes = from.read(qMin(left, copyChunkSize));
        if (bytes.isEmpty())
            return {PublishResult::Failed, from.errorString()};
        if (copy.write(bytes) != bytes.size())
            return {PublishResult::Failed, copy.errorString()};
        left -= bytes.size();
    }
    if (!syncToDisk(copy))
        return {PublishResult::Failed, copy.error() != QFileDevice::NoError ? copy.errorString() : systemError(errno)};

    PublishResult result = publishFile(copyPath, to, replace);
    if (result.outcome == PublishResult::Published) {
        copy.setAutoRemove(false);
        setPublishedMode(copy, mode);
    }
    return result;
}

bool syncToDisk(QFileDevice& file)
{
    if (!file.flush())
        return false;
    // EINVAL: a pipe or socket, which has no disk.
    return ::fsync(file.handle()) == 0 || errno == EINVAL;
}

void setPublishedMode(QFileDevice& file, int mode)
{
    // On a file system without permissions this fails, and the file is saved nevertheless.
    if (::fchmod(file.handle(), mode_t(mode)) != 0)
        errno = 0;
}

int publishedMode(const QString& path)
{
    struct stat status;
    if (::stat(QFile::encodeName(path).constData(), &status) == 0)
        return int(status.st_mode & 0777);
    // The mask can only be read by setting it: a restrictive one, because another thread may create a file meanwhile.
    const mode_t mask = ::umask(077);
    ::umask(mask);
    return int(0666 & ~mask);
}

} // namespace Velk
