#pragma once

#include "forms/fields/CaptionLabel.h"
#include "forms/fields/ComboBox.h"
#include "forms/fields/DateField.h"
#include "forms/fields/MoneyField.h"
#include "forms/fields/TimeField.h"
#include "forms/fields/TypedCombo.h"
#include "forms/fields/UsedAvailable.h"
#include "forms/lists/ListView.h"
#include "forms/lists/TreeView.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

#include <vector>

class ButtonRow;
class ComboModel;
class ListModel;
class QGridLayout;
class QHBoxLayout;
class TreeModel;

/// Builds a page or a dialog so that the code reads like the screen: each call makes a caption and its field,
/// names the field (an array control `RefID(2)` is `RefID_2`), makes the field the caption's buddy, and puts
/// both in the next row. The tab order is the order of the calls, set when the builder is destroyed.
///
///     FormBuilder form(this);
///     form.BeginGroup("Personal");
///     m_forename = form.Text("Forname", "Forename:", 50);
///     m_required.Add(form.Label("Label_1"), m_forename);
///     m_city = form.Typed("CityList", "Town/City:", m_cities);
///     form.Beside();
///     m_postcode = form.Text("Postcode", "ZIP/Postcode:", 20);
///     form.EndGroup();
///     form.BeginButtons();
///     m_ok = form.DefaultButton("OkBtn", "&Update");
///     m_exit = form.Button("ExitBtn", "&Cancel");
///     form.EndButtons();
///
/// An empty caption makes a field without one, over the whole width. A "&" in a caption is its mnemonic.
class FormBuilder final
{
public:
    /// Builds into `page`, which gets its layout here.
    explicit FormBuilder(QWidget *page);
    ~FormBuilder();
    FormBuilder(const FormBuilder &) = delete;
    FormBuilder &operator=(const FormBuilder &) = delete;

    // Fields. `maxLength` is in characters, 0 = no limit.
    QLineEdit *Text(const QString &name, const QString &caption, int maxLength = 0);
    QLineEdit *Password(const QString &name, const QString &caption, int maxLength = 0);
    QLineEdit *ReadOnly(const QString &name, const QString &caption);
    QPlainTextEdit *Notes(const QString &name, const QString &caption);
    MoneyField *Money(const QString &name, const QString &caption, MoneyField::KeyRule rule = {});
    MoneyField *Digits(const QString &name, const QString &caption, int maxDigits = 9);
    DateField *Date(const QString &name, const QString &caption);
    TimeField *Time(const QString &name, const QString &caption);
    ComboBox *Combo(const QString &name, const QString &caption, ComboModel &model);
    TypedCombo *Typed(const QString &name, const QString &caption, ComboModel &model);
    QCheckBox *Check(const QString &name, const QString &caption);
    QRadioButton *Option(const QString &name, const QString &caption);
    /// A list with its caption above and its count of rows below; it stretches with the form.
    ListView *List(const QString &name, const QString &caption, ListModel &model,
                   ListView::Choice choice = ListView::Choice::Single);
    TreeView *Tree(const QString &name, const QString &caption, TreeModel &model);
    /// A line of text over the whole width, wrapped.
    QLabel *Line(const QString &name, const QString &text);
    /// Any other widget.
    void Place(QWidget *field, const QString &name, const QString &caption = {}, bool stretches = false);

    /// The caption of the field made last; a name other than "" becomes its object name.
    CaptionLabel *Label(const QString &name = {});

    /// The next field goes into the same row, to the right.
    void Beside();

    // Buttons are in rows; outside a row of buttons a button gets a row of its own.
    enum class Align { Start, End };
    void BeginButtons(Align align = Align::End);
    void EndButtons();
    QPushButton *Button(const QString &name, const QString &caption);
    /// The button that Enter presses.
    QPushButton *DefaultButton(const QString &name, const QString &caption);
    /// Moves the buttons before it and those after it to the two ends of the row, with a widget between them
    /// if there is one.
    void Gap(QWidget *between = nullptr);

    // Structure. Groups and columns nest.
    QGroupBox *BeginGroup(const QString &caption, const QString &name = {});
    void EndGroup();
    /// Columns share the width by their weights; their lists end on one line, with the buttons below them.
    void BeginColumns(int weight = 1);
    void NextColumn(int weight = 1);
    void EndColumns();
    /// A tab panel; AddTab adds its pages, and each page is built with its own builder.
    QTabWidget *Tabs(const QString &name);
    static QWidget *AddTab(QTabWidget *tabs, const QString &name, const QString &caption);
    /// The same with a page of a class of its own.
    template <typename Page>
    static Page *AddTab(QTabWidget *tabs, Page *page, const QString &name, const QString &caption)
    {
        page->setObjectName(name);
        tabs->addTab(page, caption);
        return page;
    }

    struct PairNames {
        QString available;
        QString availableCaption;
        QString used;
        QString usedCaption;
        QString add = QStringLiteral("AddCBtn");
        QString remove = QStringLiteral("RemCBtn");
        QString clear = QStringLiteral("ClearCBtn");
    };
    struct Pair {
        ListView *available;
        ListView *used;
        QPushButton *add;
        QPushButton *remove;
        QPushButton *clear;
        UsedAvailable *moves;
    };
    /// Two lists of rows that move between them, with the three buttons in the middle.
    Pair UsedAvailablePair(const PairNames &names, ListModel &available, ListModel &used);

    /// Lets the space below the last row take the spare height of a form without lists. Done automatically at
    /// the end.
    void Stretch();

private:
    struct Section {
        QWidget *parent;
        QGridLayout *grid;
        int row = 0;
        bool beside = false;
        bool stretches = false;
        QHBoxLayout *columns = nullptr;
        ButtonRow *buttons = nullptr; ///< the last ones
        int buttonRow = -1;
        Align align = Align::End;
        struct Beside {
            const QHBoxLayout *row;
            CaptionLabel *caption;
        };
        QList<Beside> captionsBeside{};
    };
    Section &Top() { return m_sections.back(); }
    QWidget *Parent() { return Top().parent; }
    void Push(QWidget *parent, QGridLayout *grid);
    void Pop();
    void WidenFields();
    void AlignBeside();
    void BindKeys();
    /// Starts the next row, or returns the current row if the next widget goes beside the last.
    QHBoxLayout *NextRow();
    void Caption(QWidget *field, const QString &name, const QString &caption);
    template <typename Field>
    Field *Put(Field *field, const QString &name, const QString &caption);
    QPushButton *NewButton(const QString &name, const QString &caption);
    void Span(QWidget *widget, bool stretches = false);

    QWidget *m_page;
    std::vector<Section> m_sections;
    std::vector<QWidget *> m_order;
    CaptionLabel *m_label = nullptr;
    ButtonRow *m_buttons = nullptr;
};
