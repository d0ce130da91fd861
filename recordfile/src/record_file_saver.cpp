// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <recordfile/record_file_saver.h>

#include "publish_file.h"

#include <recordtext/record_scan.h>

#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>

namespace Velk {

namespace {

constexpr qint64 scanChunkSize = 1 << 20;

QString shown(const QString& path)
{
    return QDir::toNativeSeparators(path);
}

} // namespace

RecordFileSaver::RecordFileSaver(QTemporaryFile* file)
    : m_file(file)
{
    if (!m_file)
        return;
    m_file->setParent(nullptr);
    m_file->close();
    // Before the file is opened for reading, which clears the error of closing it.
    if (m_file->error() != QFileDevice::NoError)
        m_lossReason = m_file->errorString();
    // This call gives the file a name if it has none yet. A file without a name disappears
    // with the file object.
    m_temporaryPath = m_file->fileName();
    m_file->setAutoRemove(false);

    RecordScan scan;
    if (m_file->open() && m_file->seek(0)) {
        for (QByteArray bytes = m_file->read(scanChunkSize); !bytes.isEmpty(); bytes = m_file->read(scanChunkSize))
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

    PublishResult published{PublishResult::MustBeCopied, QString()};
    if (!m_temporaryPath.isEmpty() && syncToDisk(*m_file))
        published = publishFile(m_temporaryPath, target, replace);
    if (published.outcome == PublishResult::Published)
        setPublishedMode(*m_file, mode);
    const bool isCopied = published.outcome == PublishResult::MustBeCopied;
    if (isCopied)
        published = publishCopy(*m_file, m_bytes, target, mode, replace);

    switch (published.outcome) {
    case PublishResult::Published:
        if (isCopied && !m_temporaryPath.isEmpty())
            QFile::remove(m_temporaryPath);
        return success(destination);
    case PublishResult::Exists:
        return refusal(existsResult(destination));
    case PublishResult::MustBeCopied: // not of a copy, which is beside its target
    case PublishResult::Failed:
        break;
    }
    return failure(destination, published.reason);
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
