#pragma once

#include "controls/TreeModel.h"
#include "database/values/Keys.h"

#include <QWidget>

class FormBuilder;
class QCheckBox;
class QLabel;
class QMenu;
class QPlainTextEdit;
class QPushButton;
class TreeView;

/// The Course Manager, a child window: all courses, and what can be done with them.
class frmCourse final : public QWidget
{
    Q_OBJECT

public:
    explicit frmCourse(QWidget *parent = nullptr);

public slots:
    /// Lists the courses again, and applies the rights of the user who is logged on by now.
    void Form_Refresh();
    /// Lists the courses again.
    void Refresh();

private:
    void Build();
    void BuildButtons(FormBuilder &form);
    void BuildMenu();
    void Connect();
    void ApplyRights();
    void ClickNode();
    std::vector<TreeNode *> NodesOf(CourseRef courseRef) const;
    void RemoveNodes(CourseRef courseRef);
    int SelectedCourse() const; ///< 0 = none
    void AddCourse();
    void EditCourse();
    void DeleteCourse();

    TreeModel m_courses;
    bool m_quiet = false; ///< the list is being changed; a selection is no click
    TreeView *m_list = nullptr;
    QCheckBox *m_simpleList = nullptr;
    QPlainTextEdit *m_description = nullptr;
    QLabel *m_status = nullptr;
    QPushButton *m_add = nullptr;
    QPushButton *m_edit = nullptr;
    QPushButton *m_delete = nullptr;
    QPushButton *m_refresh = nullptr;
    QPushButton *m_reports = nullptr;
    QPushButton *m_exit = nullptr;
    QMenu *m_menu = nullptr;
};
