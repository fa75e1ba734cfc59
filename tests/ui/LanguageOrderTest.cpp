// In which order the texts of a language reach the window, seen by files that end too early: what comes
// before the first missing line is there, and nothing behind it.
#include "MainWindowTest.h"
#include "tags/TagPage.h"
#include "ui/TabStrip.h"

#include <QGroupBox>
#include <QMenu>
#include <QPushButton>

#include <map>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class LanguageOrder : public MainWindowTest {
protected:
    // One assignment. A target that is assigned twice stands here twice, under one name.
    struct Step {
        std::string Name;
        int Line;
        std::function<QString()> Text;
        QString Behind = {};  // what is put behind the line
    };

    void OpenNumbered() {
        Shipped.MakeFile("English.lng", Lines("old ", 101));
        Open();
        TakeToolbar();
        TakeMenusAndLabels();
        TakeTagMemory();
        TakeRest();
    }
    static QByteArray Lines(const QByteArray& word, int count) {
        QByteArray content;
        for (int n = 0; n < count; ++n) content += word + QByteArray::number(n) + '\n';
        return content;
    }
    // Applies a file of that many lines.
    void Apply(int lines) {
        Shipped.MakeFile("French.lng", Lines("new ", lines));
        Window->LanguageItems().Item(1)->trigger();
    }

    std::vector<Step> Steps;

private:
    void Take(int line, const QAction* action) {
        Steps.push_back(
            {action->objectName().toStdString(), line, [=] { return WithoutLetter(action->text()); }});
    }
    void Take(int line, const QMenu* menu) {
        Steps.push_back(
            {menu->objectName().toStdString(), line, [=] { return WithoutLetter(menu->title()); }});
    }
    template <class Control>
    void Take(int line, const Control* control, const QString& behind = {}) {
        Steps.push_back({control->objectName().toStdString(), line, [=] { return control->text(); }, behind});
    }
    void TakeToolbar() {
        for (const auto& [button, line] : {std::pair(1, 12), {2, 1}, {4, 55}, {7, 22}, {8, 7}, {5, 23}}) {
            Take(line, Form().ToolbarButton(button));
        }
        for (const auto& [tab, line] : {std::pair(0, 19), {1, 5}}) {
            Steps.push_back({"tab", line, [this, place = tab] { return Form().SSTab1->tabText(place); }});
            Steps.back().Name += std::to_string(tab);
        }
    }
    void TakeMenusAndLabels() {
        Take(0, Form().file);
        Take(1, Form().addfile);
        Take(21, Form().Quit);
        Take(2, Form().Quit);
        Take(3, Form().Options);
        Take(4, Form().Languer);
        Take(6, Form().acceptWma);
        Take(7, Form().Informations);
        Take(8, Form().Homepage);
        Take(9, Form().about);
        Take(10, Form().Label31);
        Take(11, Form().Label2);
        Take(12, Form().mynew);
        Take(13, Panel().Label11);
        Take(14, Panel().CheckOutPath);
        Take(15, Panel().Label5);
        Take(16, Panel().Label6);
        Take(17, Panel().Label7);
        Take(19, Form().Label26);
        Take(22, Form().cancel);
        Take(23, Form().ConvertAll);
        Take(25, Form().removefromlist);
        Steps.push_back({"Frame1", 29, [this] { return Form().TagPage.Frame1->title(); }});
        for (const auto& [field, line] : {std::pair(0, 30),
                                          {1, 31},
                                          {11, 32},
                                          {3, 33},
                                          {4, 34},
                                          {5, 35},
                                          {6, 36},
                                          {7, 37},
                                          {8, 38},
                                          {9, 39},
                                          {10, 40},
                                          {12, 42},
                                          {11, 41}}) {
            Take(line, Form().TagPage.Fields->Captions[static_cast<std::size_t>(field)]);
        }
        Take(43, Form().TagPage.Command3);
        Take(49, Form().aide);
    }
    void TakeTagMemory() {
        for (std::size_t n = 0; n < TagFieldCount; ++n) {
            Steps.push_back({"Label24 " + std::to_string(n), 30 + static_cast<int>(n),
                             [this, n] { return Form().TagPage.Picture4->Label24[n]->text(); }});
        }
        TakeToolTips({{5, 22}, {7, 43}});
        Take(71, Form().TagPage.Picture4->Label23);
        TakeToolTips({{1, 68}, {2, 69}, {3, 70}});
    }
    void TakeToolTips(std::initializer_list<std::pair<int, int>> buttons) {
        for (const auto& [button, line] : buttons) {
            const QAction* const action = Form().TagPage.ToolbarButton(button);
            Steps.push_back({"tool tip " + std::to_string(button), line, [=] { return action->toolTip(); }});
        }
    }
    void TakeRest() {
        Take(55, Form().adddirectory);
        Take(56, Panel().Check2);
        Take(57, Form().Label28);
        Take(58, Form().Label1);
        Take(60, Form().Label27);
        Take(0, Form().Label32, u":"_s);
        Steps.push_back({"StopImg", 63, [this] { return Form().StopImg->toolTip(); }});
        Take(64, Form().ConvertSlection);
        Take(64, Form().convertnoww);
        Take(65, Form().playfilemenu);
        Take(65, Form().playfile);
        Take(67, Form().ActionMenu);
        Take(72, Form().OpenDirectory);
        for (const auto& [column, line] : {std::pair(0, 61), {1, 26}, {2, 74}}) {
            Steps.push_back({"column " + std::to_string(column), line, [this, place = column] {
                                 return Rows().headerData(place, Qt::Horizontal, Qt::DisplayRole).toString();
                             }});
        }
    }
};

TEST_F(LanguageOrder, StopsAtTheFirstLineThatAFileDoesNotHave) {
    OpenNumbered();
    ASSERT_EQ(Steps.size(), 81U);
    int told = 0;
    Dialogs().ShowMessage = [&](auto&&...) { ++told; };
    for (int lines = 0; lines <= 76; ++lines) {
        Window->LanguageItems().Item(0)->trigger();
        told = 0;
        Apply(lines);
        std::map<std::string, QString> expected;
        bool stopped = false;
        for (const Step& step : Steps) {
            // Behind the last line of a file one empty line can be read.
            stopped = stopped || step.Line > lines;
            const QString line = step.Line == lines ? QString() : u"new %1"_s.arg(step.Line);
            expected[step.Name] = (stopped ? u"old %1"_s.arg(step.Line) : line) + step.Behind;
        }
        EXPECT_EQ(told, stopped ? 1 : 0) << lines;
        EXPECT_EQ(stopped, lines < 74) << lines;
        for (const Step& step : Steps) {
            EXPECT_EQ(step.Text(), expected[step.Name]) << step.Name << " by a file of " << lines << " lines";
        }
    }
}

}  // namespace
}  // namespace Sonmira
