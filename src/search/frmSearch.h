#pragma once

#include "searchcontrols.h"
#include "searchcriteria.h"

#include <QDialog>

class FormatRegistry;

/// Asks what to search for. The criteria outlive the dialog: it shows the remembered ones, and OK and Reset store new
/// ones.
class frmSearch : public QDialog, private SearchControls
{
    Q_OBJECT

public:
    /// `types` are the entries of the type box, `formats` those of the format picker.
    frmSearch(SearchCriteria &remembered, const QStringList &types, FormatRegistry &formats, QWidget *parent = nullptr);

    /// True unless the user pressed OK.
    bool Cancelled() const { return m_cancelled; }

private:
    void ConnectControls();
    void Form_Load(const QStringList &types, FormatRegistry &formats);
    void ShowCriteria();
    void ShowType();
    void ShowFormat();
    void EnableOK();
    QString Joiner() const;
    SearchCriteria CriteriaFromControls() const;
    void cmdOK_Click();
    void cmdReset_Click();

    SearchCriteria &m_criteria;
    bool m_cancelled = true;
};
