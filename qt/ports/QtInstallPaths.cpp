// Where the installed or built program finds its songs and data.
#include "qt/ports/QtInstallPaths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace {

bool HoldsMusic(const QDir& dir) { return QFileInfo(dir.filePath("Music")).isDir(); }

}  // namespace

std::string ProgramDataDir(const std::string& programDir) {
    const QDir beside(QString::fromStdString(programDir));
    if (HoldsMusic(beside)) return programDir;
    const QDir shared(beside.filePath("../share/tessuma"));
    if (HoldsMusic(shared)) return QDir::cleanPath(shared.absolutePath()).toStdString();
    return programDir;
}

std::string ProgramDataDir() { return ProgramDataDir(QCoreApplication::applicationDirPath().toStdString()); }
