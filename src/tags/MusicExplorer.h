#pragma once

#include <QWidget>

class QFileSystemModel;
class QLabel;
class QListView;
class QModelIndex;
class QTreeView;

namespace Sonmira {

// A browser for music: the folders of the computer, and of the one that is current the music files. It starts
// in the user's music folder. Keys work as in every list: arrows move, Enter picks.
class MusicExplorer : public QWidget {
    Q_OBJECT

public:
    explicit MusicExplorer(QWidget* parent = nullptr);

    void SetCaptions(const QString& files, const QString& folders);

    // Makes a folder current; an inner path. One that is not there changes nothing.
    void ShowFolder(const QString& folder);
    // The current folder, an inner path.
    QString Folder() const;

    QLabel* FoldersCaption;
    QLabel* CurrentFolder;
    QTreeView* Folders;
    QLabel* FilesCaption;
    QListView* Files;

Q_SIGNALS:
    // The user picked a file; an inner path.
    void FileChosen(const QString& path);

private:
    void EnterFolder(const QModelIndex& index);
    void Pick(const QModelIndex& index);

    QFileSystemModel* FolderModel;
    QFileSystemModel* FileModel;
};

}  // namespace Sonmira
