#pragma once

#include <QObject>

class ImportState;
class ListView;
class QPushButton;

/// The page of frmImportWiz for which field of the file goes where.
class ImportMapPage final : public QObject
{
    Q_OBJECT

public:
    ImportMapPage(QWidget *page, ImportState &state);
    void Enter();

private:
    void ChangeMap();
    void CheckFile();

    ImportState &m_state;
    ListView *ImportSel;
    QPushButton *MapBtn;
    QPushButton *CheckBtn;
};
