// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/base/faults/FileFaults.h"

#include <QFile>

#include <cstdlib>

namespace quelto::test {

FileFaults::FileFaults(const QString& folder)
    : m_folder(QFile::encodeName(folder))
{
    use({});
    ::setenv("QUELTO_FAULTS", QFile::encodeName(m_control.path()).constData(), 1);
}

FileFaults::~FileFaults()
{
    ::unsetenv("QUELTO_FAULTS");
}

void FileFaults::use(const QList<QByteArray>& rules)
{
    QFile::remove(m_control.filePath(QStringLiteral("calls")));
    // Two rows of rules never have the same number, also those of two objects.
    static int number = 0;
    QFile file(m_control.filePath(QStringLiteral("rules")));
    if (file.open(QIODevice::WriteOnly)) {
        file.write(QByteArray::number(++number) + '\n' + m_folder + '\n' + rules.join('\n'));
    }
}

QList<FileCall> FileFaults::calls() const
{
    QList<FileCall> calls;
    QFile file(m_control.filePath(QStringLiteral("calls")));
    if (!file.open(QIODevice::ReadOnly)) {
        return calls;
    }
    while (!file.atEnd()) {
        const auto line = file.readLine().chopped(1);
        const auto words = line.split(' ');
        calls.append({.name = words[0],
                      .number = words[1].toInt(),
                      .fault = words[2].toInt(),
                      .path = QByteArrayList(words.sliced(3)).join(' ')});
    }
    return calls;
}

QByteArray faultRule(const QByteArray& call, int number, int fault)
{
    return call + ' ' + QByteArray::number(number) + ' ' + QByteArray::number(fault) + " *";
}

} // namespace quelto::test
