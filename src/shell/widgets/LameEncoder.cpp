#include "shell/widgets/LameEncoder.h"

#include "kit/Icons.h"
#include "platform/Folders.h"
#include "platform/Paths.h"
#include "shell/Settings.h"
#include "shell/widgets/Events.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

QLabel* Text(QWidget* parent, const QString& name, const QString& text) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

QPushButton* Button(QWidget* parent, const QString& name, const QString& text) {
    auto* button = new QPushButton(text, parent);
    button->setObjectName(name);
    button->setAutoDefault(false);
    return button;
}

}  // namespace

LameEncoder::LameEncoder(QWidget* owner)
    : QDialog(owner),
      Label1(Text(this, u"Label1"_s, u"Lame_enc.dll not found in your system's folder"_s)),
      Label6(Text(this, u"Label6"_s,
                  u"Lame Encoder 3.98 is requiered on this computer to properly encode to MP3"_s)),
      Label2(Text(this, u"Label2"_s, u"You can download the Lame Encoder from:"_s)),
      Label3(Button(this, u"Label3"_s, EncoderPage())),
      Label4(Text(this, u"Label4"_s, QString())),
      Command3(Button(this, u"Command3"_s, u"Download"_s)),
      Command1(Button(this, u"Command1"_s, u"Cancel"_s)),
      SystemFolder(WithBackslash(EncoderSystemFolder())) {
    setObjectName(u"LameEncoder"_s);
    setWindowTitle(u"Lame Encoder"_s);
    Label4->setText(
        u"Unzip the downloaded file then put lame_enc.dll in your system's folder Then restart the "
        u"application. "
        "The file must be placed here: \n"_s +
        ShownPath(SystemFolder));
    LayOut();
    OnEvent(Command1, &QPushButton::clicked, this, [this] { close(); });
    OnEvent(Command3, &QPushButton::clicked, this, [this] {
        ShellOpen(EncoderDownload(), ProgramFolder());
        close();
    });
    OnEvent(Label3, &QPushButton::clicked, this, [this] { ShellOpen(Label3->text(), ProgramFolder()); });
}

void LameEncoder::LayOut() {
    QFont headline = Label1->font();
    headline.setBold(true);
    Label1->setFont(headline);
    // A button, so that the link can be reached and pressed by keyboard, in the dress of a link.
    Label3->setFlat(true);
    Label3->setCursor(Qt::PointingHandCursor);
    QPalette link = Label3->palette();
    link.setColor(QPalette::ButtonText, link.color(QPalette::Link));
    Label3->setPalette(link);
    auto* image1 = new QLabel(this);
    image1->setObjectName(u"Image1"_s);
    image1->setPixmap(OwnIcon(u"missing-encoder").pixmap(QSize(48, 48), devicePixelRatioF()));
    auto* own = Text(this, u"LabelOwn"_s,
                     u"Here the file comes with the program itself; it needs the package libmp3lame0."_s);

    auto* texts = new QVBoxLayout;
    for (QWidget* row : {Label1, Label6, Label2}) texts->addWidget(row);
    texts->addWidget(Label3, 0, Qt::AlignLeft);
    texts->addWidget(Label4);
    texts->addWidget(own);
    auto* upper = new QHBoxLayout;
    upper->addWidget(image1, 0, Qt::AlignTop);
    upper->addLayout(texts, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(Command3);
    buttons->addWidget(Command1);
    auto* column = new QVBoxLayout(this);
    column->addLayout(upper);
    column->addLayout(buttons);
    setFixedSize(460, column->heightForWidth(460));
}

void LameEncoder::ShowNotice(QWidget* owner) {
    LameEncoder(owner).exec();
}

}  // namespace Sonmira
