#pragma once

#include "exchange/CsvProgress.h"

#include <QObject>

class ImportState;
class ListView;
class QLabel;
class QLineEdit;
class QProgressBar;
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

/// The run with its progress bar.
class ImportRunPage final : public QObject
{
    Q_OBJECT

public:
    ImportRunPage(QWidget *page, ImportState &state);
    /// Imports to the end or until Cancel.
    void Run();
    bool IsRunning() const { return m_running; }
    void Cancel();

signals:
    void RunningChanged();

private:
    void SetRunning(bool running);
    void Show(int done, int maximum);

    ImportState &m_state;
    CsvProgress m_progress;
    bool m_running = false;
    QLabel *m_done;
    QProgressBar *ProgBar;
};
