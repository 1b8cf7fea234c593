#pragma once

#include <QDialog>
#include <QString>

class QListWidget;
class QPushButton;

/// Offers the catalogs that lie in the program's folder.
class frmSelectCatalog : public QDialog
{
    Q_OBJECT

public:
    explicit frmSelectCatalog(QWidget *parent);

    /// The full path of the chosen catalog, "" when the dialog was closed without OK.
    const QString &SelectedCatalog() const { return m_selectedCatalog; }

private:
    void Form_Load();
    void MakeControls();
    void cmdOK_Click();
    void lst_DblClick();
    QString CurrentText() const;

    QString m_selectedCatalog;
    QListWidget *lst = nullptr;
    QPushButton *cmdOK = nullptr;
};
