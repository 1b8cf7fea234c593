// How much memory an open catalog takes, in multiples of its file.
// usage: bench_memory CATALOG

#include "benchprogram.h"

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>

#include <cstdio>

namespace {

/// A line of the process's status ("VmRSS", "VmHWM") in bytes; 0 where there is no such file.
qint64 StatusBytes(const QByteArray &name)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(name))
            return line.mid(name.size() + 1).simplified().split(' ').first().toLongLong() * 1024;
    }
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    if (argc < 2)
        return 2;
    const QString path = QFile::decodeName(argv[1]);
    OpenProgram program;
    const qint64 before = StatusBytes("VmRSS");
    if (!program.Open(path))
        return 1;
    const double file = static_cast<double>(QFileInfo(path).size());
    const qint64 open = StatusBytes("VmRSS");
    std::printf(
        "file %.1f MB, program without a catalog %.1f MB, with it %.1f MB = %.2f times the file (peak %.2f)\n",
        file / 1e6, static_cast<double>(before) / 1e6, static_cast<double>(open) / 1e6,
        static_cast<double>(open) / file, static_cast<double>(StatusBytes("VmHWM")) / file);
    return 0;
}
