#pragma once

#include <QDate>

class QComboBox;

/// Makes three combo boxes the boxes of a date: editable, completed from their own lists while the user types, the
/// whole text selected on entry. Keys that make a character, Enter and Escape among them, end in the box.
void MakeDateBoxes(QComboBox &year, QComboBox &month, QComboBox &day);

/// Fills the boxes of a date: the years from `currentYear` down to 1940, the months, the days. Their texts are empty
/// afterwards.
void FillDateBoxes(QComboBox &year, QComboBox &month, QComboBox &day, int currentYear = QDate::currentDate().year());
