#pragma once

#include "panelcontrols.h"

#include <pugixml.hpp>

#include <QDate>
#include <QGroupBox>
#include <QPointer>
#include <QString>

#include <functional>

class BrowseTree;
class CatalogDocument;
class FormatRegistry;
class QModelIndex;
class QTreeView;
class ShownTypes;

/// The right-hand side of the main window: the fields of the selected listing in a frame. Shows the listing that is
/// current in the tree, and hands every edit to the document at once.
///
/// Filling the fields writes nothing: only what the user does raises the changed flag.
class DetailPanel : public QGroupBox, private PanelControls
{
    Q_OBJECT

public:
    using Today = std::function<QDate()>;

    /// The tree's view must show its model already. All must outlive the panel. `today` tells the date that a listing
    /// gets with its first format.
    DetailPanel(
        CatalogDocument &document, BrowseTree &tree, FormatRegistry &formats, const ShownTypes &types, QTreeView &trv,
        QWidget *parent, Today today = &QDate::currentDate);

    /// Shows a node: fills the panel with a listing, hides its controls for anything else. Runs by itself whenever
    /// another node becomes current; to be run by hand after the document was changed from outside.
    void trv_NodeClick(const QModelIndex &node);

    /// Shows or hides every control in the frame; the frame itself stays. A field that goes while it has the focus
    /// hands it to the tree, where typing changes no listing. It has it back when it returns, unless the user has
    /// turned to the tree, or to another field, meanwhile.
    void ShowHideInfoFrame(bool show);

    /// The listing shown last; null when it is gone.
    pugi::xml_node CurrentItem() const { return m_item; }

    /// The row of the format picker.
    int FormatRow() const;
    /// Chooses a format by its row in the picker, as the user does there.
    void SelectFormat(int row);
    /// Takes the wrong-date mark off, or goes on to the next format; from the last one to none.
    void StepFormat();

    /// Puts the focus in the type box.
    void FocusType();

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    /// A node was clicked: whether it is a listing.
    void listingSelected(bool listing);

private:
    void ConnectFields();
    void ConnectTree();
    void FillTypeList();
    void Forget();
    void HandFocusToTree();
    void TakeFocusBack();

    void Fill(pugi::xml_node item);
    void SelectType(const QString &type);
    void ShowType(const QString &type);
    void ShowText(QLineEdit &box, const char *attribute) const;
    void ShowDatePart(QComboBox &box, const char *attribute) const;
    void ShowDateAdded();
    void ShowNotes(NoteBox &box, const QString &text) const;

    template<class Procedure>
    void Edit(const char *handler, Procedure &&procedure);
    void SetItemAttribute(const char *name, const QString &value);
    void cboType_Click();
    void chkWrongDate_Click(bool checked);
    void cmdClearDate_Click();
    void icbFormat_Click();
    void icbFormat_Activated();

    CatalogDocument &m_document;
    BrowseTree &m_tree;
    FormatRegistry &m_formats;
    const ShownTypes &m_types;
    QTreeView &m_trv;
    Today m_today;

    pugi::xml_node m_item;
    QPointer<QWidget> m_leftField; ///< the field that had the focus when it was hidden
    bool m_filling = false;
    bool m_refilling = false; ///< the listing that is being filled in is the one that is shown
    bool m_hasConcert = true; ///< the type has a concert name
};
