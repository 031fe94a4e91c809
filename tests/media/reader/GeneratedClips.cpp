// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/media/reader/GeneratedClips.h"

#include "tests/media/reader/RunProgram.h"

#include <QFile>

#include <stdexcept>

namespace quelto::test {

QString GeneratedClips::make(const QString& name, const QString& arguments) const
{
    auto target = path(name);
    std::vector<QByteArray> command{"ffmpeg", "-nostdin", "-v", "error", "-y"};
    for (const auto& argument : arguments.split(u' ', Qt::SkipEmptyParts)) {
        command.push_back(argument.toUtf8());
    }
    command.push_back(QFile::encodeName(target));
    const auto log = path(QStringLiteral("ffmpeg.log"));
    if (runProgram(command, "/dev/null", QFile::encodeName(log)) != 0) {
        throw std::runtime_error(read(log).toStdString());
    }
    return target;
}

QString GeneratedClips::brightening(const QString& name, double seconds, double rise, const QString& encoding) const
{
    return make(name,
                QStringLiteral("-f lavfi -i color=c=black:s=64x64:r=60:d=%1,format=yuv420p,"
                               "geq=lum='16+T*%2':cb=128:cr=128 -c:v libx264 -qp 4 %3")
                    .arg(seconds)
                    .arg(rise)
                    .arg(encoding));
}

QString GeneratedClips::quadrants(const QString& name) const
{
    return make(name,
                QStringLiteral("-f lavfi -i color=c=0xFF8080:s=64x32:r=30:d=1,"
                               "drawbox=x=32:y=0:w=32:h=16:c=0x8080FF:t=fill,"
                               "drawbox=x=0:y=16:w=32:h=16:c=0x800000:t=fill,"
                               "drawbox=x=32:y=16:w=32:h=16:c=0x000080:t=fill -c:v libx264 -qp 4"));
}

QString GeneratedClips::write(const QString& name, const QByteArray& bytes) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        throw std::runtime_error("cannot write the file");
    }
    return file.fileName();
}

QByteArray GeneratedClips::read(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("cannot read the file");
    }
    return file.readAll();
}

} // namespace quelto::test
