#include "core/shell/frmAbout.h"

#include "core/files/File_Tools.h"
#include "core/icons/Icons.h"
#include "core/session/WebSite.h"
#include "core/shell/Version.h"
#include "platform/desktop/Shell.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{
/// The palette's colour for links, light on a dark window: the standard blue is too dark to read there.
QColor LinkColour(const QPalette &palette)
{
    constexpr int light = 200;
    const QColor link = palette.color(QPalette::Link);
    const bool dark =
        palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
    return dark ? QColor::fromHsl(link.hslHue(), link.hslSaturation(), light) : link;
}
} // namespace

frmAbout::frmAbout(QWidget *parent)
    : FormDialog(QStringLiteral("frmAbout"), QStringLiteral("About Veltrane"), parent)
{
    auto *link = new QLabel(u"<a style=\"color:" % LinkColour(palette()).name() % u"\" href=\"" % WebSite() %
                                u"\">" % WebSite() % u"</a>",
                            this);
    link->setObjectName(QStringLiteral("WebLink"));
    link->setTextInteractionFlags(Qt::TextBrowserInteraction);
    connect(link, &QLabel::linkActivated, this, [](const QString &address) { OpenDocument(address); });

    auto *systemInformation = new QPushButton(QStringLiteral("&System Info..."), this);
    systemInformation->setObjectName(QStringLiteral("SysInfoBtn"));
    systemInformation->setAutoDefault(false);
    const QString tool = Shell::SystemInformationTool();
    systemInformation->setVisible(!tool.isEmpty());
    connect(systemInformation, &QPushButton::clicked, this, [tool] { Shell::Run(tool); });
    auto *ok = new QPushButton(QStringLiteral("&OK"), this);
    ok->setObjectName(QStringLiteral("OKBtn"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &frmAbout::accept);

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(systemInformation);
    buttons->addStretch();
    buttons->addWidget(ok);

    const int em = fontMetrics().height();
    auto *page = new QVBoxLayout(this);
    page->setContentsMargins(em * 2, em * 2, em * 2, em);
    page->setSpacing(em);
    page->addWidget(NewHeading());
    page->addWidget(new QLabel(QStringLiteral("Administration for education and training providers"), this));
    page->addWidget(link);
    page->addStretch();
    page->addLayout(buttons);
    ok->setFocus();
}

QWidget *frmAbout::NewHeading()
{
    const int em = fontMetrics().height();
    auto *heading = new QWidget(this);
    auto *picture = new QLabel(heading);
    picture->setPixmap(Icons::Application().pixmap(QSize(em * 4, em * 4), devicePixelRatioF()));
    auto *name = new QLabel(QStringLiteral("Veltrane"), heading);
    QFont font = name->font();
    font.setPointSizeF(font.pointSizeF() * 2.2);
    font.setWeight(QFont::Light);
    name->setFont(font);
    auto *version = new QLabel(VersionLine(QStringLiteral("Version")), heading);
    version->setObjectName(QStringLiteral("Label1"));
    version->setTextInteractionFlags(Qt::TextSelectableByMouse);

    auto *texts = new QVBoxLayout;
    texts->setSpacing(0);
    texts->addWidget(name);
    texts->addWidget(version);
    auto *row = new QHBoxLayout(heading);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(em);
    row->addWidget(picture);
    row->addLayout(texts);
    row->addStretch();
    return heading;
}
