#include "app/manual_browser_form.h"

#include "platform/core/app_folder.h"

#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QTextBlock>
#include <QTextFrame>
#include <QTextTable>
#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

// The look of a page: points of text, per cent of a line, pixels of room.
constexpr qreal textSize = 11;
constexpr qreal lineHeight = 115;
constexpr qreal margin = 20;
constexpr qreal belowText = 8;
constexpr qreal aboveHeading = 16;
constexpr qreal inCells = 6;

QString manualFolder()
{
    return platform::inAppFolder(u"manual"_s);
}

bool isOfManual(const QUrl& name)
{
    return name.isLocalFile() &&
           QFileInfo(name.toLocalFile())
               .absoluteFilePath()
               .startsWith(QFileInfo(manualFolder()).absoluteFilePath() + u'/');
}

void forEachTable(const QTextFrame& frame, const std::function<void(QTextTable&)>& action)
{
    for (QTextFrame* const child : frame.childFrames()) {
        if (auto* const table = qobject_cast<QTextTable*>(child))
            action(*table);
        forEachTable(*child, action);
    }
}

void drawLines(QTextTable& table, const QPalette& colours)
{
    QTextTableFormat format = table.format();
    format.setBorder(1);
    format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    format.setBorderBrush(colours.mid());
    format.setBorderCollapse(true);
    format.setCellSpacing(0);
    format.setCellPadding(inCells);
    format.setBottomMargin(belowText);
    table.setFormat(format);
    for (int column = 0; column < table.columns(); ++column) {
        QTextCharFormat heading = table.cellAt(0, column).format();
        heading.setBackground(colours.alternateBase());
        table.cellAt(0, column).setFormat(heading);
    }
}

} // namespace

ManualBrowser::ManualBrowser(QWidget* parent) : QTextBrowser(parent)
{
    QFont font = document()->defaultFont();
    font.setPointSizeF(textSize);
    document()->setDefaultFont(font);
    document()->setDocumentMargin(margin);
    connect(this, &QTextBrowser::sourceChanged, this, [this] { // going back comes here too
        layOutPage();
        fitPictures();
    });
}

void ManualBrowser::goTo(const QString& page)
{
    setSource(QUrl::fromLocalFile(manualFolder() + u'/' + page + u".md"_s),
              QTextDocument::MarkdownResource);
}

QString ManualBrowser::page() const
{
    return QFileInfo(source().toLocalFile()).completeBaseName();
}

QVariant ManualBrowser::loadResource(int type, const QUrl& name)
{
    const QUrl file = source().resolved(name);
    if (!isOfManual(file))
        return {};
    if (type == QTextDocument::ImageResource)
        return QImage(file.toLocalFile());
    QFile page(file.toLocalFile());
    if (page.open(QIODevice::ReadOnly))
        return page.readAll();
    return u"# No se puede leer el manual\n\nFalta la página «%1», o no se puede leer: %2.\n\nLas "
           "páginas del manual están en la carpeta `manual`, junto al programa."_s
               .arg(QFileInfo(page).fileName(), page.errorString())
               .toUtf8();
}

void ManualBrowser::doSetSource(const QUrl& name, QTextDocument::ResourceType /*type*/)
{
    const QUrl target = source().resolved(name);
    if (!isOfManual(target))
        return;
    QTextBrowser::doSetSource(target, QTextDocument::MarkdownResource);
}

void ManualBrowser::layOutPage()
{
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        QTextCursor cursor(block);
        if (cursor.currentTable())
            continue;
        QTextBlockFormat format = block.blockFormat();
        const bool isHeading = format.headingLevel() > 0;
        format.setTopMargin(isHeading && block != document()->begin() ? aboveHeading : 0);
        format.setBottomMargin(block.textList() ? belowText / 2 : belowText);
        if (!block.text().contains(QChar::ObjectReplacementCharacter)) // a picture's is its own
            format.setLineHeight(lineHeight, QTextBlockFormat::ProportionalHeight);
        cursor.setBlockFormat(format);
    }
    forEachTable(*document()->rootFrame(),
                 [this](QTextTable& table) { drawLines(table, palette()); });
    moveCursor(QTextCursor::Start);
}

/// Makes pictures that are wider than the view as wide as it.
void ManualBrowser::fitPictures()
{
    const int room = viewport()->width() - static_cast<int>(2 * margin);
    QTextCursor cursor(document());
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const QTextFragment fragment = part.fragment();
            if (!fragment.charFormat().isImageFormat())
                continue;
            QTextImageFormat format = fragment.charFormat().toImageFormat();
            const auto picture = document()
                                     ->resource(QTextDocument::ImageResource, QUrl(format.name()))
                                     .value<QImage>();
            const int width = std::min(picture.width(), room);
            if (format.width() == width)
                break;
            format.setWidth(width);
            cursor.setPosition(fragment.position());
            cursor.setPosition(fragment.position() + fragment.length(), QTextCursor::KeepAnchor);
            cursor.setCharFormat(format);
            break; // the fragments of the block may be others now
        }
    }
    // An edit lays out what it changed alone, and takes what was still to be laid out for done.
    document()->markContentsDirty(0, document()->characterCount());
}

void ManualBrowser::resizeEvent(QResizeEvent* event)
{
    QTextBrowser::resizeEvent(event);
    fitPictures();
}
