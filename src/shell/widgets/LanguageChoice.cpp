#include "shell/widgets/LanguageChoice.h"

#include "kit/Icons.h"
#include "platform/Paths.h"
#include "platform/Values.h"
#include "shell/LanguageFiles.h"
#include "shell/Settings.h"
#include "shell/widgets/Deb.h"
#include "shell/widgets/Events.h"
#include "shell/widgets/LanguageMenu.h"

#include <QAction>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace Sonmira {

using namespace Qt::StringLiterals;

QString SavedLanguagePlace(QWidget& window) {
    const auto saved = [] { return ReadIniValue(SettingsFile, u"LANGUE"_s, u"VALUE"_s); };
    QString place = saved();
    if (!place.isEmpty()) return place;
    Deb::Unload();  // the logo would stand before the picker
    Form1(&window).exec();
    return saved();
}

void ApplyLanguagePlace(const LanguageMenu& languages, int place, const ApplyTexts& apply) {
    languages.Item(place)->setChecked(true);
    apply(languages.PathOf(place));
}

void ConnectLanguageMenu(LanguageMenu& languages, const ApplyTexts& apply) {
    OnEvent(&languages, &LanguageMenu::LangueNameClick, &languages, [&languages, apply](int place) {
        WithFailureBox([&] {
            WriteIniValue(SettingsFile, u"LANGUE"_s, u"VALUE"_s, NumberText(place));
            ApplyLanguagePlace(languages, place, apply);
            languages.UncheckAllBut(place);
        });
    });
}

Form1::Form1(QWidget* owner)
    : QDialog(owner), ListView1(new QListWidget(this)), Command1(new QPushButton(u"Ok"_s, this)) {
    setObjectName(u"Form1"_s);
    setWindowTitle(u"Sonmira - Language"_s);
    ListView1->setObjectName(u"ListView1"_s);
    Command1->setObjectName(u"Command1"_s);
    Command1->setDefault(true);
    auto* label = new QLabel(u"Select your language :"_s, this);
    label->setObjectName(u"Label2"_s);
    label->setBuddy(ListView1);
    ListView1->setAccessibleName(u"Languages"_s);
    ListView1->setIconSize(QSize(16, 16));
    auto* column = new QVBoxLayout(this);
    column->addWidget(label);
    column->addWidget(ListView1, 1);
    column->addWidget(Command1, 0, Qt::AlignRight);
    resize(320, 300);

    FillLanguageList();
    OnEvent(ListView1, &QListWidget::itemClicked, this, [this] { Command1_Click(); });
    OnEvent(ListView1, &QListWidget::itemActivated, this, [this] { Command1_Click(); });
    OnEvent(Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
    ListView1->setFocus();
}

void Form1::keyPressEvent(QKeyEvent* event) {
    // Without a choice a program may have to end; a stray key must not decide that.
    if (event->key() != Qt::Key_Escape) QDialog::keyPressEvent(event);
}

void Form1::FillLanguageList() {
    for (const LanguageFile& file : FindLanguageFiles()) {
        auto* row = new QListWidgetItem(OwnIcon(u"language"), file.Caption, ListView1);
        row->setData(Qt::UserRole, FileNameOf(file.Path));
    }
    for (int place = 0; place < ListView1->count(); ++place) {
        if (ListView1->item(place)->text() != u"English") continue;
        ListView1->setCurrentRow(place);
        break;
    }
}

void Form1::Command1_Click() {
    // A click and its activation may both arrive; the first one has chosen.
    if (!isVisible()) return;
    int chosen = 0;
    for (int place = ListView1->count() - 1; place >= 0; --place) {
        if (ListView1->item(place)->isSelected()) chosen = place;
    }
    WriteIniValue(SettingsFile, u"LANGUE"_s, u"VALUE"_s, NumberText(chosen));
    accept();
}

}  // namespace Sonmira
