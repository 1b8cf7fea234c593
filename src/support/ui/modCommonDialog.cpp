#include "modCommonDialog.h"

#include "paths.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

using namespace Qt::StringLiterals;

namespace {

QString QtPatterns(const QString &patterns)
{
    QStringList list = patterns.split(u';', Qt::SkipEmptyParts);
    list.replaceInStrings(u"*.*"_s, u"*"_s);
    return list.join(u' ');
}

void SetStartingPoint(QFileDialog &dialog, const UserPrompts::FileRequest &request)
{
    const QFileInfo proposed(QDir::fromNativeSeparators(request.proposed));
    const bool hasFolder = !request.proposed.isEmpty() && proposed.isAbsolute() && proposed.dir().exists();
    dialog.setDirectory(hasFolder ? proposed.absolutePath() : request.folder);
    if (!request.proposed.isEmpty()) {
        dialog.selectFile(proposed.fileName());
    }
}

void Prepare(QFileDialog &dialog, const UserPrompts::FileRequest &request)
{
    dialog.setWindowTitle(request.title);
    // The descriptions name their patterns themselves.
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setNameFilters(NameFilters(request.filter));
    SetStartingPoint(dialog, request);
}

QString Run(QFileDialog &dialog)
{
    if (dialog.exec() != QDialog::Accepted) {
        return {};
    }
    return QDir::toNativeSeparators(dialog.selectedFiles().value(0));
}

bool MayCreate(QWidget *owner, const QFileDialog &dialog, const QString &path)
{
    QMessageBox box(
        QMessageBox::Question, dialog.windowTitle(),
        FileTitle(path, true) + u"\nThis file does not exist.\nDo you want to create it?"_s,
        QMessageBox::Yes | QMessageBox::No, owner);
    box.setTextFormat(Qt::PlainText);
    return box.exec() == QMessageBox::Yes;
}

} // namespace

QStringList NameFilters(const QString &filter)
{
    const QStringList parts = filter.split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        filters.append(u"%1 (%2)"_s.arg(parts[i], QtPatterns(parts[i + 1])));
    }
    return filters;
}

QString OpenFileDialog(QWidget *owner, const UserPrompts::FileRequest &request)
{
    QFileDialog dialog(owner);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    // No default suffix: Qt would add it to the name of an existing file without an extension too, and not find it.
    dialog.setFileMode(QFileDialog::ExistingFile);
    Prepare(dialog, request);
    return Run(dialog);
}

QString SaveFileDialog(QWidget *owner, const UserPrompts::FileRequest &request)
{
    QFileDialog dialog(owner);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setDefaultSuffix(request.extension);
    Prepare(dialog, request);
    QString path = Run(dialog);
    while (!path.isEmpty() && !QFileInfo::exists(path) && !MayCreate(owner, dialog, path)) {
        path = Run(dialog);
    }
    return path;
}
