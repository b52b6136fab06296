#pragma once

#include "courses/manager/CourseTree.h"
#include "database/statements/Rights.h"

#include <QWidget>

class CourseMenu;
class FormBuilder;
class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class TreeView;

/// The Course Manager, a child window: courses in their folders or as a simple list, and what can be done
/// with them. Which folders are open is kept in files named "coursetree.tmp": one where the program writes,
/// from closing to opening, and one in the working directory while it is open.
class frmCourse final : public QWidget
{
    Q_OBJECT

public:
    explicit frmCourse(QWidget *parent = nullptr);
    ~frmCourse() override;

public slots:
    /// Lists the courses of the session's database, and applies the rights of the user who is logged on by
    /// now.
    void Form_Refresh();
    /// Lists the courses again.
    void Refresh();

private:
    void Build();
    void BuildButtons(FormBuilder &form);
    void Connect();

    using Command = std::function<void()>;
    void BuildMenu();
    void AddFolderTools();
    void AddClipboardTools();
    void AddNodeTools();
    void BindFind();
    bool MayChange(bool courseAlone) const;
    CourseClipboard::Offer Offer() const;

    void Relist(const QString &openFolders);
    void ChooseView();
    void ClickNode();
    void ApplyRights();
    /// Runs a command during which a selection is no click, and then the click on what is selected.
    void Run(const Command &command);
    void EditSelected();
    void Find();

    void AddCourse();
    void AddFolder();
    void NewFolder(bool atRoot);
    void Edit();
    void EditCourse(CourseRef courseRef);
    void EditFolder(FolderRef folderRef);
    void Delete();
    void PasteDuplicate();

    CourseTree m_tree;
    bool m_quiet = false; ///< the tree is being changed; a selection is no click
    TreeView *m_list = nullptr;
    QCheckBox *m_simpleList = nullptr;
    QLineEdit *m_find = nullptr;
    QPlainTextEdit *m_description = nullptr;
    QLabel *m_status = nullptr;
    QPushButton *m_add = nullptr;
    QPushButton *m_addFolder = nullptr;
    QPushButton *m_edit = nullptr;
    QPushButton *m_delete = nullptr;
    QPushButton *m_expand = nullptr;
    QPushButton *m_collapse = nullptr;
    QPushButton *m_refresh = nullptr;
    QPushButton *m_reports = nullptr;
    QPushButton *m_exit = nullptr;
    CourseMenu *m_menu = nullptr;
};
