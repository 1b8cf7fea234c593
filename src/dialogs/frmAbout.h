#pragma once

#include <QDialog>

/// Tells what the program is: title, version and description.
class frmAbout : public QDialog
{
    Q_OBJECT

public:
    explicit frmAbout(QWidget *parent);

private:
    void MakeControls();
};
