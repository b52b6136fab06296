#pragma once

#include <QObject>

class ComboModel;
class ListModel;
class ListView;
class QLineEdit;
class QWidget;

// The pages that the import and the export wizard share. Each builds its fields into the given widget.

/// The page for what is imported or exported, and in what kind of file.
class DataSetPage final : public QObject
{
    Q_OBJECT

public:
    struct Names {
        QString types;
        QString list;
        QString listCaption;
        QString empty;
    };
    DataSetPage(QWidget *page, const Names &names, ComboModel &types, ListModel &sets);
    void Enter();

signals:
    void Chosen(); ///< a double click or Enter on a data set

private:
    ListView *m_list;
};

/// The page for the file.
class FilePage final : public QObject
{
    Q_OBJECT

public:
    enum class Purpose { Open, Save };
    FilePage(QWidget *page, Purpose purpose, const QString &caption, const QString &hint);
    void Enter();
    QString FileName() const;
    void SetFileName(const QString &file);
    /// The name that a save dialog proposes while the field is empty, without the folder.
    void Propose(const QString &name) { m_proposed = name; }

signals:
    void Changed();

private:
    void Browse();

    Purpose m_purpose;
    QString m_proposed;
    QLineEdit *Filename;
};
