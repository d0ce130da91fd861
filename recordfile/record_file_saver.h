// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef RECORDFILE_RECORD_FILE_SAVER_H
#define RECORDFILE_RECORD_FILE_SAVER_H

#include <recordfile/recordfile_export.h>

#include <QCoreApplication>
#include <QString>

#include <memory>

QT_BEGIN_NAMESPACE
class QTemporaryFile;
QT_END_NAMESPACE

namespace Velk {

/// The result of a save: where the recording is now, and a text for the user.
struct RecordSaveResult
{
    enum Outcome
    {
        Saved,           ///< all of it is at the destination
        SavedIncomplete, ///< its complete rows are at the destination; the recording had lost rows, on a full disk
        Exists,          ///< nothing was changed: the destination exists and was not to be replaced
        NotSaved         ///< the destination is as it was
    };

    Outcome outcome = NotSaved;
    QString title;   ///< short; empty when outcome is Saved
    QString message; ///< a sentence that says what happened and what to do; empty when outcome is Saved

    bool isSaved() const { return outcome == Saved || outcome == SavedIncomplete; }
};

/// Takes a finished record file over from the displayed key set, and saves it under the name that the user chose.
///
/// The file is complete before its name appears at the destination. Until it is saved or discarded it stays on disk at
/// temporaryPath(), also when this object or the process ends: a recording that cannot be saved is not lost.
///
/// Take the file after each recording. A file that is not taken is used for the next recording too, and is not emptied:
/// after the end of a shorter recording the rest of the longer one follows, and nothing in the file separates the two.
///
///     model.stopRecording();
///     RecordFileSaver saver(model.takeRecordFile());
///     const RecordSaveResult result = saver.save(path);
///     if (!result.isSaved())
///         report(result.title, result.message); // the recording is at saver.temporaryPath()
///
/// Not a QObject; one thread at a time. Nothing throws.
class RECORDFILE_EXPORT RecordFileSaver
{
    Q_DECLARE_TR_FUNCTIONS(RecordFileSaver)

public:
    enum ExistingFile
    {
        KeepExisting,
        ReplaceExisting
    };

    /// Takes ownership of the file that DisplayedMemoryKeyListModel::takeRecordFile() returned after stopRecording();
    /// null means that there is no recording. Closes the file if it is open. Reads it once to count its rows.
    explicit RecordFileSaver(QTemporaryFile* file);
    /// Leaves a recording that was neither saved nor discarded at temporaryPath().
    ~RecordFileSaver();
    RecordFileSaver(const RecordFileSaver&) = delete;
    RecordFileSaver& operator=(const RecordFileSaver&) = delete;

    /// Whether there is a recording that was neither saved nor discarded.
    bool hasRecording() const { return m_file != nullptr; }
    /// The path of the recording until then. Empty without a recording, and when the system gave the file no name.
    QString temporaryPath() const { return m_temporaryPath; }

    /// The number of complete rows, without the header.
    qint64 rows() const { return m_rows; }
    /// The size of the saved file in bytes: the header and the complete rows.
    qint64 bytes() const { return m_bytes; }
    /// The size of a partly written last line in bytes. It is not saved.
    qint64 partialLineBytes() const { return m_partialLineBytes; }
    /// Whether rows were lost: the file could not be written or read to its end, or its last line is partly written.
    bool isIncomplete() const { return !m_lossReason.isEmpty(); }

    /// Checks, before a recording begins, whether it could be saved there: isSaved(), or the result that save() would
    /// return. A disk that becomes full later is not foreseen.
    static RecordSaveResult checkDestination(const QString& destination, ExistingFile existing = KeepExisting);

    /// Moves the recording to the destination, or copies it there from another file system. When the result isSaved(),
    /// this object has no recording left. Otherwise the recording is still at temporaryPath(), and another destination
    /// can be tried.
    ///
    /// With ReplaceExisting a file at the destination is replaced in one step, and its permissions are kept. Of a
    /// symbolic link, the file that it points to is replaced. Only regular files are replaced.
    RecordSaveResult save(const QString& destination, ExistingFile existing = KeepExisting);

    /// Removes the recording from disk.
    void discard();

private:
    static RecordSaveResult existsResult(const QString& destination);
    RecordSaveResult refusal(RecordSaveResult result) const;
    RecordSaveResult failure(const QString& destination, const QString& reason) const;
    RecordSaveResult success(const QString& destination);
    void letGo();

    std::unique_ptr<QTemporaryFile> m_file;
    QString m_temporaryPath;
    qint64 m_rows = 0;
    qint64 m_bytes = 0;
    qint64 m_partialLineBytes = 0;
    QString m_lossReason;
};

} // namespace Velk

#endif
