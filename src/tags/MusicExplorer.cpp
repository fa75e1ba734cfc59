#include "tags/MusicExplorer.h"

#include "platform/Paths.h"
#include "shell/widgets/Events.h"

#include <QFile>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QLabel>
#include <QListView>
#include <QStandardPaths>
#include <QTreeView>
#include <QVBoxLayout>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

QString MusicFolder() {
    const QString music = QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
    return QDir(music).exists() ? music : QDir::homePath();
}

QStringList MusicPatterns() {
    QStringList patterns;
    for (const char16_t* ending : {u"wav", u"mp3", u"mp2", u"ogg", u"oga", u"wma", u"aac", u"m4a", u"mp4",
                                   u"alac", u"ape", u"flac", u"mpc", u"mp+"}) {
        patterns.append(u"*."_s + QString::fromUtf16(ending));
    }
    return patterns;
}

QString InnerPath(const QString& path) {
    return FromNative(QFile::encodeName(path));
}

QFileSystemModel* MakeModel(QObject* parent, QDir::Filters filter) {
    auto* model = new QFileSystemModel(parent);
    model->setFilter(filter | QDir::NoDotAndDotDot);
    model->setReadOnly(true);
    return model;
}

}  // namespace

MusicExplorer::MusicExplorer(QWidget* parent)
    : QWidget(parent),
      FoldersCaption(new QLabel(u"Folders"_s)),
      CurrentFolder(new QLabel),
      Folders(new QTreeView),
      FilesCaption(new QLabel(u"Filename"_s)),
      Files(new QListView),
      FolderModel(MakeModel(this, QDir::AllDirs)),
      FileModel(MakeModel(this, QDir::Files)) {
    setObjectName(u"Explorer1"_s);
    FoldersCaption->setBuddy(Folders);
    FilesCaption->setBuddy(Files);
    CurrentFolder->setTextFormat(Qt::PlainText);
    CurrentFolder->setWordWrap(true);
    FileModel->setNameFilters(MusicPatterns());
    FileModel->setNameFilterDisables(false);
    FolderModel->setRootPath(u"/"_s);
    Folders->setModel(FolderModel);
    Folders->setHeaderHidden(true);
    for (int column = 1; column < FolderModel->columnCount(); ++column) Folders->hideColumn(column);
    Files->setModel(FileModel);
    Files->setUniformItemSizes(true);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(FoldersCaption);
    column->addWidget(Folders, 1);
    column->addWidget(FilesCaption);
    column->addWidget(CurrentFolder);
    column->addWidget(Files, 1);
    OnEvent(Folders->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& index, const QModelIndex& /*before*/) { EnterFolder(index); });
    OnEvent(Files, &QListView::clicked, this, [this](const QModelIndex& index) { Pick(index); });
    OnEvent(Files, &QListView::activated, this, [this](const QModelIndex& index) { Pick(index); });
    ShowFolder(InnerPath(MusicFolder()));
}

void MusicExplorer::SetCaptions(const QString& files, const QString& folders) {
    FilesCaption->setText(files);
    FoldersCaption->setText(folders);
}

void MusicExplorer::ShowFolder(const QString& folder) {
    const QModelIndex index = FolderModel->index(QFile::decodeName(ToNative(folder)));
    if (!index.isValid()) return;
    Folders->setCurrentIndex(index);
    Folders->expand(index);
    Folders->scrollTo(index);
}

QString MusicExplorer::Folder() const {
    return InnerPath(FileModel->rootPath());
}

void MusicExplorer::EnterFolder(const QModelIndex& index) {
    Files->setRootIndex(FileModel->setRootPath(FolderModel->filePath(index)));
    CurrentFolder->setText(ShownPath(Folder()));
}

void MusicExplorer::Pick(const QModelIndex& index) {
    Q_EMIT FileChosen(InnerPath(FileModel->filePath(index)));
}

}  // namespace Sonmira
