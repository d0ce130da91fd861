#include "publish_file.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>

#include <sys/stat.h>
#include <unistd.h>

namespace Velk {

namespace {

PublishResult failed(int errorNumber, const QString& from)
{
    // A file that was deleted while it was open has no name to give away, but its data is there still.
    const bool hasNoName = errorNumber == ENOENT && !QFileInfo::exists(from);
    return {errorNumber == EXDEV || hasNoName ? PublishResult::MustBeCopied : PublishResult::Failed, errorNumber};
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
        // A rename replaces; a link is the step that refuses a name that is taken.
        if (::link(source.constData(), target.constData()) == 0) {
            ::unlink(source.constData());
            return {PublishResult::Published, 0};
        }
        if (errno == EEXIST)
            return {PublishResult::Exists, 0};
        if (!lacksHardLinks(errno))
            return failed(errno, from);
        if (QFileInfo::exists(to))
            return {PublishResult::Exists, 0};
    }
    if (::rename(source.constData(), target.constData()) == 0)
        return {PublishResult::Published, 0};
    return failed(errno, from);
}

bool syncToDisk(QFileDevice& file)
{
    if (!file.flush())
        return false;
    // EINVAL: the file is on something that has nothing to wait for.
    return ::fsync(file.handle()) == 0 || errno == EINVAL;
}

void setPublishedMode(QFileDevice& file, int mode)
{
    // A file system without permissions refuses; the file is saved all the same.
    if (::fchmod(file.handle(), mode_t(mode)) != 0)
        errno = 0;
}

int publishedMode(const QString& path)
{
    struct stat status;
    if (::stat(QFile::encodeName(path).constData(), &status) == 0)
        return int(status.st_mode & 0777);
    // The mask can be read by setting it only: for that moment to one that gives nothing away.
    const mode_t mask = ::umask(077);
    ::umask(mask);
    return int(0666 & ~mask);
}

} // namespace Velk
