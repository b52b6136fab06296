#pragma once

#include <QStackedWidget>
#include <QWidget>

#include <array>
#include <vector>

class QPushButton;

/// The pages of a wizard, each with its title above it. A page that is not available is skipped.
class WizardPages final : public QStackedWidget
{
    Q_OBJECT

public:
    using QStackedWidget::QStackedWidget;

    /// Adds a page and returns the widget to build its fields into.
    QWidget *AddPage(const QString &name, const QString &title);
    void SetAvailable(int page, bool available);
    bool IsAvailable(int page) const { return m_available[static_cast<size_t>(page)]; }

private:
    std::vector<bool> m_available;
};

/// The button strip of a wizard: `cmdNav_0` to `cmdNav_4` are Help, Back, Next, Finish and Cancel. Back
/// returns along the pages that were visited. Help, Back and Cancel (which closes the form) act by
/// themselves; Next and Finish are left to the form, since it may have to check its page first.
class SSWizardNavBar final : public QWidget
{
    Q_OBJECT

public:
    enum Code { Help, Back, Next, Finish, Cancel };

    explicit SSWizardNavBar(WizardPages *pages, QWidget *parent = nullptr);
    /// Makes the layout of the form: the pages and, aligned with them, the strip below.
    void LayOutBelowPages();

    void SetEnabled(Code button, bool enabled);
    void GoNext(); ///< to the next available page; does nothing if there is none
    void GoTo(int page);
    void GoBack();
    void
    ReturnTo(int page); ///< to a page visited before; the pages after it are no longer part of the way back
    bool HasNext() const { return NextPage() >= 0; }
    bool HasBack() const { return !m_visited.empty(); }

signals:
    void Click(int code);
    /// A page is shown; the form sets what its buttons may do.
    void PageShown(int page);

private:
    int NextPage() const;
    void OnClick(int code);
    void Show(int page);

    WizardPages *m_pages;
    std::array<QPushButton *, 5> cmdNav{};
    std::vector<int> m_visited;
};
