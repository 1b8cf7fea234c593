#pragma once

#include "walk.h"

#include <QStringList>

/// The lists of the View menu, by their positions there.
enum class ListKind { Lossless = 0, Lossy = 1, NeedLossless = 2, DoNotHave = 3 };

/// The kind's caption in the menu, with its access key.
QString ListKindCaption(ListKind kind);
/// The same without "&".
QString ListKindName(ListKind kind);

/// A filled list.
struct ListedLabels
{
    QStringList labels;  ///< in tree order
    qsizetype total = 0; ///< listings without a format or with one of known class, wrong dates left out
};

/// Gathers the labels of the tree's listings that belong to a kind. A listing whose format is of unknown class is not
/// counted, and is listed exactly when the one before it was. Throws ProgramError.
ListedLabels GatherLabels(ListKind kind, const ReportSource &source);
