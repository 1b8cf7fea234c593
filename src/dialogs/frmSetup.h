#pragma once

#include <QDialog>
#include <QString>

class CatalogDocument;
class QListWidget;
class QPushButton;
class ShownTypes;
class UserPrompts;
class clsResizeLimits;
enum class CatalogList;

/// Edits one of the two lists that a catalog keeps: its recording types or its web sources. Every change goes into the
/// document at once; whoever shows the dialog refreshes what depends on the list and marks the catalog changed.
class frmSetup : public QDialog
{
    Q_OBJECT

public:
    enum Mode { WebSources = 0, RecordingTypes = 1 };

    /// All must outlive the dialog; the fixed ones of `types` are the reserved words.
    frmSetup(
        CatalogDocument &document, const ShownTypes &types, UserPrompts &prompts, clsResizeLimits &limits,
        QWidget *parent);
    ~frmSetup() override;

    /// Chooses the list and shows it.
    void Init(Mode mode);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void MakeControls();
    void LoadElements();
    void cmdAdd_Click();
    void cmdDelete_Click();
    void lst_Click();
    void lst_DblClick();

    void Add();
    void Edit();
    void Delete();
    bool ListKey(int key);
    bool IsAllowed(const QString &text);
    int SelectedRow() const;

    CatalogDocument &m_document;
    const ShownTypes &m_types;
    UserPrompts &m_prompts;
    clsResizeLimits &m_limits;
    CatalogList m_list{};
    QString m_noun;
    QString m_prompt;

    QListWidget *lst = nullptr;
    QPushButton *cmdAdd = nullptr;
    QPushButton *cmdDelete = nullptr;
    QPushButton *cmdOK = nullptr;
};
