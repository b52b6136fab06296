#pragma once

#include <QObject>

class ImportState;
class ListView;
class QLineEdit;
class QPushButton;

// The pages of frmImportWiz. Each builds its fields into the widget that it is given and shows what
// ImportState holds.

/// What is imported, and from what kind of file.
class ImportDataPage final : public QObject
{
    Q_OBJECT

public:
    ImportDataPage(QWidget *page, ImportState &state);
    void Enter();

signals:
    void Chosen(); ///< a double click or Enter on a data set

private:
    ListView *m_list;
};

/// The file.
class ImportFilePage final : public QObject
{
    Q_OBJECT

public:
    explicit ImportFilePage(QWidget *page);
    void Enter();
    QString FileName() const;

signals:
    void Changed();

private:
    void Browse();

    QLineEdit *Filename;
};

/// Which field of the file goes where.
class ImportMapPage final : public QObject
{
    Q_OBJECT

public:
    ImportMapPage(QWidget *page, ImportState &state);
    void Enter();

private:
    void ChangeMap();

    ImportState &m_state;
    ListView *ImportSel;
    QPushButton *MapBtn;
};
