#include "modCommonDialog.h"

#include "modaldialog.h"
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
    if (!request.proposed.isEmpty())
        dialog.selectFile(proposed.fileName());
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
    if (ShowModal(dialog) != QDialog::Accepted)
        return {};
    return QDir::toNativeSeparators(dialog.selectedFiles().value(0));
}

QStringList Patterns(const QString &filter)
{
    const QStringList parts = filter.split(u'|');
    QStringList patterns;
    for (qsizetype i = 1; i < parts.size(); i += 2)
        patterns += parts[i].split(u';');
    return patterns;
}

// A name may have dots of its own: only an extension that the filter names makes another one needless.
QString WithExtension(const QString &path, const UserPrompts::FileRequest &request)
{
    QStringList patterns = Patterns(request.filter);
    patterns.removeAll(u"*.*"_s);
    if (path.isEmpty() || request.extension.isEmpty() || QDir::match(patterns, FileTitle(path, true)))
        return path;
    return path + u'.' + request.extension;
}

bool MayWrite(QWidget *owner, const QString &title, const QString &path)
{
    const bool exists = QFileInfo::exists(path);
    const QString question = exists ? u"%1 already exists.\nDo you want to replace it?"_s
                                    : u"%1\nThis file does not exist.\nDo you want to create it?"_s;
    QMessageBox box(
        exists ? QMessageBox::Warning : QMessageBox::Question, title, question.arg(FileTitle(path, true)),
        QMessageBox::Yes | QMessageBox::No, owner);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(exists ? QMessageBox::No : QMessageBox::Yes);
    return ShowModal(box) == QMessageBox::Yes;
}

} // namespace

QStringList NameFilters(const QString &filter)
{
    const QStringList parts = filter.split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2)
        filters.append(u"%1 (%2)"_s.arg(parts[i], QtPatterns(parts[i + 1])));
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
    // Neither the dialog's default suffix, which a name with a dot does not get, nor its question, which would be about
    // the name without one.
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    Prepare(dialog, request);
    QString path;
    do {
        path = WithExtension(Run(dialog), request);
    } while (!path.isEmpty() && !MayWrite(owner, request.title, path));
    return path;
}
