#include <recordfile/record_file_saver.h>

#include "publish_file.h"

#include <recordtext/record_scan.h>

#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>

#include <cerrno>
#include <cstring>

namespace Velk {

namespace {

constexpr qint64 chunkSize = 1 << 20;

QString systemError(int errorNumber)
{
    return QString::fromLocal8Bit(std::strerror(errorNumber));
}

QString shown(const QString& path)
{
    return QDir::toNativeSeparators(path);
}

// Copies the first `size` bytes; false with *reason set when it could not.
bool copyBytes(QFileDevice& from, QFileDevice& to, qint64 size, QString* reason)
{
    for (qint64 left = size; left > 0;) {
        const QByteArray bytes = from.read(qMin(left, chunkSize));
        if (bytes.isEmpty()) {
            *reason = from.errorString();
            return false;
        }
        if (to.write(bytes) != bytes.size()) {
            *reason = to.errorString();
            return false;
        }
        left -= bytes.size();
    }
    if (!syncToDisk(to)) {
        *reason = to.error() != QFileDevice::NoError ? to.errorString() : systemError(errno);
        return false;
    }
    return true;
}

} // namespace

RecordFileSaver::RecordFileSaver(QTemporaryFile* file)
    : m_file(file)
{
    if (!m_file)
        return;
    m_file->setParent(nullptr);
    m_file->close();
    // Asked now: opening the file for reading forgets what closing it could not write.
    if (m_file->error() != QFileDevice::NoError)
        m_lossReason = m_file->errorString();
    // A temporary file need not have a name until it is asked for one, and one without a name is gone when it is
    // closed.
    m_temporaryPath = m_file->fileName();
    m_file->setAutoRemove(false);

    RecordScan scan;
    if (m_file->open() && m_file->seek(0)) {
        for (QByteArray bytes = m_file->read(chunkSize); !bytes.isEmpty(); bytes = m_file->read(chunkSize))
            scan.add(bytes);
    }
    if (m_lossReason.isEmpty() && m_file->error() != QFileDevice::NoError)
        m_lossReason = m_file->errorString();
    m_file->close();

    m_rows = qMax(qint64(0), scan.completeLines() - 1);
    m_bytes = scan.completeBytes();
    m_partialLineBytes = scan.bytes() - scan.completeBytes();
    if (m_lossReason.isEmpty() && m_partialLineBytes > 0)
        m_lossReason = tr("its last line is cut off");
}

RecordFileSaver::~RecordFileSaver() = default;

RecordSaveResult RecordFileSaver::checkDestination(const QString& destination, ExistingFile existing)
{
    const QString title = tr("Recording not saved");
    const QFileInfo info(destination);
    if (destination.isEmpty())
        return {RecordSaveResult::NotSaved, title, tr("No file name was given.\nName the file to save to.")};
    if (info.isDir() || info.fileName().isEmpty())
        return {RecordSaveResult::NotSaved, title,
                tr("%1 is a directory.\nAdd the name of a file to it.").arg(shown(destination))};
    if (!info.exists() && info.isSymLink())
        return {RecordSaveResult::NotSaved, title,
                tr("%1 is a symbolic link to a file that does not exist.\nRemove the link, or choose another file.")
                    .arg(shown(destination))};
    if (info.exists() && !info.isFile())
        return {RecordSaveResult::NotSaved, title,
                tr("%1 is not a regular file and cannot be replaced.\nChoose another file.").arg(shown(destination))};
    if (info.exists() && existing == KeepExisting)
        return existsResult(destination);

    const QFileInfo directory(info.absolutePath());
    if (!directory.isDir())
        return {RecordSaveResult::NotSaved, title,
                tr("The directory %1 does not exist.\nCreate it, or choose another.")
                    .arg(shown(directory.absoluteFilePath()))};
    if (!directory.isWritable())
        return {RecordSaveResult::NotSaved, title,
                tr("You may not create files in %1.\nChoose another directory, or change its permissions.")
                    .arg(shown(directory.absoluteFilePath()))};
    return {RecordSaveResult::Saved, QString(), QString()};
}

RecordSaveResult RecordFileSaver::save(const QString& destination, ExistingFile existing)
{
    if (!m_file)
        return {RecordSaveResult::NotSaved, tr("Recording not saved"),
                tr("There is no recording.\nStart and stop one first.")};
    if (m_bytes == 0)
        return {RecordSaveResult::NotSaved, tr("Recording not saved"),
                tr("The record file holds no complete line.\nMake room on the disk of %1 and record again.")
                    .arg(shown(QDir::tempPath()))};
    const RecordSaveResult check = checkDestination(destination, existing);
    if (!check.isSaved())
        return refusal(check);

    const bool replace = existing == ReplaceExisting;
    const QFileInfo info(destination);
    const QString target = info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
    const int mode = publishedMode(target);

    if (!m_file->open() || !m_file->seek(0))
        return failure(destination, m_file->errorString());
    if (m_partialLineBytes > 0 && !m_file->resize(m_bytes))
        return failure(destination, m_file->errorString());
    m_partialLineBytes = 0;

    PublishResult published{PublishResult::MustBeCopied, 0};
    if (!m_temporaryPath.isEmpty() && syncToDisk(*m_file))
        published = publishFile(m_temporaryPath, target, replace);
    if (published.outcome == PublishResult::Published) {
        setPublishedMode(*m_file, mode);
        return success(destination);
    }
    if (published.outcome == PublishResult::Exists)
        return refusal(existsResult(destination));
    if (published.outcome == PublishResult::Failed)
        return failure(destination, systemError(published.errorNumber));

    // Written beside the destination under another name, and renamed: the same last step as above, which QSaveFile
    // does not offer, since it replaces whatever has come up under the name meanwhile.
    QTemporaryFile copy(QFileInfo(target).absolutePath() + QStringLiteral("/.record-XXXXXX"));
    if (!copy.open())
        return failure(destination, copy.errorString());
    const QString copyPath = copy.fileName();
    QString reason;
    if (!copyBytes(*m_file, copy, m_bytes, &reason))
        return failure(destination, reason);
    published = publishFile(copyPath, target, replace);
    if (published.outcome == PublishResult::Exists)
        return refusal(existsResult(destination));
    if (published.outcome != PublishResult::Published)
        return failure(destination, systemError(published.errorNumber));
    copy.setAutoRemove(false);
    setPublishedMode(copy, mode);
    if (!m_temporaryPath.isEmpty())
        QFile::remove(m_temporaryPath);
    return success(destination);
}

void RecordFileSaver::discard()
{
    if (!m_file)
        return;
    if (!m_temporaryPath.isEmpty())
        QFile::remove(m_temporaryPath);
    letGo();
}

RecordSaveResult RecordFileSaver::existsResult(const QString& destination)
{
    return {RecordSaveResult::Exists, tr("Recording not saved"),
            tr("%1 exists already.\nChoose another file, or replace it.").arg(shown(destination))};
}

RecordSaveResult RecordFileSaver::refusal(RecordSaveResult result) const
{
    m_file->close();
    if (!m_temporaryPath.isEmpty())
        result.message += QLatin1Char('\n') + tr("The recording is kept in %1.").arg(shown(m_temporaryPath));
    return result;
}

RecordSaveResult RecordFileSaver::failure(const QString& destination, const QString& reason) const
{
    return refusal({RecordSaveResult::NotSaved, tr("Recording not saved"),
                    tr("%1 could not be written: %2.\nMake room on the disk, or choose another file.")
                        .arg(shown(destination), reason)});
}

RecordSaveResult RecordFileSaver::success(const QString& destination)
{
    const QString directory = QFileInfo(m_temporaryPath).absolutePath();
    letGo();
    if (!isIncomplete())
        return {RecordSaveResult::Saved, QString(), QString()};
    return {
        RecordSaveResult::SavedIncomplete, tr("Recording incomplete"),
        tr("The record file could not be written to its end (%1). Complete rows saved in %2: %3; what came after them "
           "is lost.\nMake room on the disk of %4 before you record again.")
            .arg(m_lossReason, shown(destination), QString::number(m_rows), shown(directory))};
}

void RecordFileSaver::letGo()
{
    m_file.reset();
    m_temporaryPath.clear();
}

} // namespace Velk
