#pragma once

#include <QTextBrowser>

/// Shows pages of the manual, which are Markdown files, with their pictures no wider than the view.
/// Only files of the manual are ever read; a link to anything else does nothing.
class ManualBrowser final : public QTextBrowser
{
public:
    explicit ManualBrowser(QWidget* parent);

    /// Goes to a page, by the name of its file without ".md". A page that can't be read says so
    /// itself.
    void goTo(const QString& page);
    /// The page shown.
    QString page() const;

    QVariant loadResource(int type, const QUrl& name) override;

protected:
    void doSetSource(const QUrl& name, QTextDocument::ResourceType type) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void layOutPage();
    void fitPictures();
};
