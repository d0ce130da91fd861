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

/// What became of a save: where the recording is now, and what to tell the user.
struct RecordSaveResult
{
    enum Outcome
    {
        Saved,           ///< all of it is at the destination
        SavedIncomplete, ///< its complete rows are at the destination; rows were lost before, when the disk was full
        Exists,          ///< nothing was done: the destination exists and was not to be replaced
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
/// temporaryPath(), also when this object or the process ends: a recording is not lost because it could not be saved.
///
/// A file that served several recordings without being taken is never emptied by the displayed key set: past the end
/// of the newest recording it still holds what an older, longer one had written there. Nothing in the file tells the
/// two apart, so take it after each recording, and the next one gets a file of its own.
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

    /// Takes the file over, with ownership, as DisplayedMemoryKeyListModel::takeRecordFile() gave it after
    /// stopRecording(); null stands for no recording. Reads it once to count its rows. A file that is still open
    /// is closed.
    explicit RecordFileSaver(QTemporaryFile* file);
    /// Leaves a recording that was neither saved nor discarded at temporaryPath().
    ~RecordFileSaver();
    RecordFileSaver(const RecordFileSaver&) = delete;
    RecordFileSaver& operator=(const RecordFileSaver&) = delete;

    /// Whether there is a recording that was neither saved nor discarded.
    bool hasRecording() const { return m_file != nullptr; }
    /// Where the recording is until then. Empty without a recording, and when the system gave the file no name.
    QString temporaryPath() const { return m_temporaryPath; }

    /// The complete rows, the header not counted.
    qint64 rows() const { return m_rows; }
    /// The bytes of the header and the complete rows: the size of the saved file.
    qint64 bytes() const { return m_bytes; }
    /// The bytes of a partly written last line, which is not saved.
    qint64 partialLineBytes() const { return m_partialLineBytes; }
    /// Whether rows were lost: the file could not be written or read to its end, or ends in a partly written line.
    bool isIncomplete() const { return !m_lossReason.isEmpty(); }

    /// Whether the recording could be saved there as far as can be told beforehand: isSaved(), or what save() would
    /// tell. For asking before a recording begins.
    static RecordSaveResult checkDestination(const QString& destination, ExistingFile existing = KeepExisting);

    /// Moves the recording to the destination, or copies it there from another file system. After isSaved() there is
    /// no recording here any more; otherwise it is still at temporaryPath(), and another destination can be tried.
    ///
    /// A destination that exists is replaced in one step when asked for, and keeps its permissions; where it is a
    /// symbolic link, the file that it points to is replaced. What is not a regular file is never replaced.
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
