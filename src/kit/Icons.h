#pragma once

#include <QIcon>
#include <QLabel>

namespace Sonmira {

// One of our own drawings by its file name without ending, such as "folder"; null where there is none.
// Drawn anew for each size and scale, so it is sharp everywhere; ink and fills follow CurrentPalette() at the
// time of drawing, and a selected row does not tint it. Disabled, it is drawn at 38 percent of its strength.
// The names: new, add-file, add-directory, convert, convert-selection, cancel, cancel-file, information,
// play, close, language, wma-support, help, faq, homepage, open-directory, remove; folder, options, stop,
// clear, save; tag, tag-copy, tag-paste, tag-show, tag-cancel, tag-save; row-converted, row-error,
// row-conversion, row-waiting; collection, drive, audio-file, format-aac, format-alac, format-ape,
// format-flac, format-mp3, format-mpc, format-ogg, format-wav, format-wma; missing-encoder, logo; and the
// icons of the two programs, sonmira and audiotool.
QIcon OwnIcon(QStringView name);

// The drawing for files with this ending ("flac" or ".flac", in any case): that of its format, or
// "audio-file" for any other.
QIcon FormatIcon(QStringView ending);

// One of our own drawings that only decorates: drawn for the screen that it is shown on, in the middle of
// the control, and passed over by the pointer and by assistive tools.
class IconBox : public QLabel {
    Q_OBJECT

public:
    // `size` is the edge of the drawing in logical pixels.
    IconBox(QWidget* parent, const QIcon& icon, int size = 16);

    QSize sizeHint() const override { return {Edge, Edge}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QIcon Icon;
    int Edge;
};

}  // namespace Sonmira
