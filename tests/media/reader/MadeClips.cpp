// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/media/reader/MadeClips.h"

#include "tests/media/probe/Probe.h"

#include <QFile>

#include <stdexcept>

namespace quelto::test {

QString MadeClips::make(const QString& name, const QString& words) const
{
    const auto target = path(name);
    const auto result = run(QStringLiteral("ffmpeg"),
                            QStringList{QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-y")} +
                                words.split(u' ', Qt::SkipEmptyParts) + QStringList{target});
    if (result.exitCode != 0) {
        throw std::runtime_error(result.errors.toStdString());
    }
    return target;
}

QString MadeClips::lightening(const QString& name, double seconds, double rise, const QString& encoding) const
{
    return make(name,
                QStringLiteral("-f lavfi -i color=c=black:s=64x64:r=60:d=%1,format=yuv420p,"
                               "geq=lum='16+T*%2':cb=128:cr=128 -c:v libx264 -qp 4 %3")
                    .arg(seconds)
                    .arg(rise)
                    .arg(encoding));
}

QString MadeClips::quarters(const QString& name) const
{
    return make(name,
                QStringLiteral("-f lavfi -i color=c=0xFF8080:s=64x32:r=30:d=1,"
                               "drawbox=x=32:y=0:w=32:h=16:c=0x8080FF:t=fill,"
                               "drawbox=x=0:y=16:w=32:h=16:c=0x800000:t=fill,"
                               "drawbox=x=32:y=16:w=32:h=16:c=0x000080:t=fill -c:v libx264 -qp 4"));
}

QString MadeClips::write(const QString& name, const QByteArray& bytes) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        throw std::runtime_error("cannot write");
    }
    return file.fileName();
}

QByteArray MadeClips::read(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("cannot read");
    }
    return file.readAll();
}

} // namespace quelto::test
