#pragma once

#include "controls/TreeModel.h"
#include "courses/manager/FolderStore.h"
#include "forms/frames/ItemDialog.h"

class QLineEdit;
class QPlainTextEdit;
class TreeView;

/// "Folder": adds a folder to one or several places, or changes the name and the description of one.
class frmCategory final : public ItemDialog
{
    Q_OBJECT

public:
    explicit frmCategory(FolderStore store, QWidget *parent = nullptr);

    /// Opens on a new folder in the folder `location` ("!" and folder; "!0" is the root level).
    void NewFolder(const QString &location);
    /// Opens on a folder, which stays where it is.
    void EditFolder(FolderRef folderRef);
    QString FolderName() const;

private:
    int Store() override;
    void Tick(const QString &key);
    void ApplyRights();

    FolderStore m_store;
    TreeModel m_places;
    FolderRef m_parent;
    TreeView *m_placeList = nullptr;
    QLineEdit *m_name = nullptr;
    QPlainTextEdit *m_description = nullptr;
};
