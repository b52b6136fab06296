#pragma once

#include "controls/ListModel.h"
#include "forms/frames/FormDialog.h"

#include <array>

class FormBuilder;
class QLineEdit;
class QRadioButton;
class QStackedWidget;

/// Chooses the session's database: the current one, a registered data source, a file or a server's catalogue.
/// gDialogResult is 1 if another one was chosen, otherwise 0. Nothing is opened here.
class frmODBCLogon final : public FormDialog
{
    Q_OBJECT

public:
    /// `proposed` is the path of a database file, shown where the session has none.
    explicit frmODBCLogon(const QString &proposed = {}, QWidget *parent = nullptr);

private:
    /// The choices, in the order of the options and of the pages below them.
    enum Way { Present, Source, File, Server };

    void BuildOptions(FormBuilder &form);
    QWidget *PresentPage();
    QWidget *SourcePage();
    QWidget *FilePage();
    QWidget *ServerPage();
    void ShowSession(const QString &proposed);
    Way Chosen() const;
    void Refresh();
    void Take();
    bool TakeSource();
    bool TakeFile();
    bool TakeServer();

    ListModel m_sources;
    std::array<QRadioButton *, 4> m_ways{};
    QStackedWidget *m_pages = nullptr;
    QLineEdit *m_file = nullptr;
    QLineEdit *m_server = nullptr;
    QLineEdit *m_catalogue = nullptr;
};
