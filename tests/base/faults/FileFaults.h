// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QTemporaryDir>

namespace quelto::test {

/// A file call, failed or not.
struct FileCall {
    QByteArray name;
    int number = 0;
    /// An error code, ShortWrite, SlowCall, or 0 for none.
    int fault = 0;
    /// Inside the watched folder.
    QByteArray path;
};

/// Makes file calls of this test program fail. The program links quelto_file_faults.
///
/// Controls the library as other programs do when it is preloaded into them: QUELTO_FAULTS names a folder with the file
/// `rules`, which FileFaultRules describes, and the library appends every call to the file `calls` there. With
/// QUELTO_FAULTS_THREAD only calls of threads with that name count.
class FileFaults {
public:
    /// Watches the files in the folder, which is an absolute path, until destroyed.
    explicit FileFaults(const QString& folder);
    ~FileFaults();
    FileFaults(const FileFaults&) = delete;
    FileFaults& operator=(const FileFaults&) = delete;

    /// Replaces the rules, each "CALL NUMBER FAULT PATTERN", and forgets the calls.
    void use(const QList<QByteArray>& rules);
    QList<FileCall> calls() const;

private:
    QTemporaryDir m_control;
    QByteArray m_folder;
};

/// "CALL NUMBER FAULT *"
QByteArray faultRule(const QByteArray& call, int number, int fault);

} // namespace quelto::test
