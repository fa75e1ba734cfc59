#include "shell/widgets/Deb.h"

#include "kit/Icons.h"

#include <QLabel>
#include <QVBoxLayout>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {
std::unique_ptr<Deb> theLogo;
}

Deb::Deb() : QWidget(nullptr, Qt::SplashScreen) {
    setObjectName(u"Deb"_s);
    auto* picturePlus = new QLabel(this);
    picturePlus->setObjectName(u"PicturePlus"_s);
    picturePlus->setPixmap(OwnIcon(u"logo").pixmap(QSize(360, 180), devicePixelRatioF()));
    picturePlus->setAccessibleName(u"Sonmira"_s);
    auto* version = new QLabel(u"Version 2.1"_s, this);
    version->setObjectName(u"Label1"_s);
    version->setAlignment(Qt::AlignRight);
    auto* column = new QVBoxLayout(this);
    column->addWidget(picturePlus);
    column->addWidget(version);
}

Deb& Deb::Instance() {
    if (!theLogo) theLogo = std::make_unique<Deb>();
    return *theLogo;
}

void Deb::Unload() {
    theLogo.reset();
}

}  // namespace Sonmira
