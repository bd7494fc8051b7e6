// The window before there is anything in it.
#pragma once

#include <QQuickWindow>

class QQmlEngine;

namespace tavrin {

/// The main window. It shows its ground by itself, which costs little more than an empty window: the person sees at
/// once that the program starts. What stands on the ground is put there afterwards.
class MainWindow : public QQuickWindow {
    Q_OBJECT

  public:
    /// `engine` must outlive the window.
    explicit MainWindow(QQmlEngine& engine);

    /// Makes the document at `url`, an item, and lets it fill the window. False where it can't be made; why is told on
    /// the log.
    [[nodiscard]] bool furnish(const QUrl& url);

    /// Back from wherever it is minimised or hidden, over other windows, with the keyboard; as large as it was.
    void bringToFront();

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void fill();

    QQmlEngine& engine_;
    QQuickItem* ground_ = nullptr;
    QQuickItem* content_ = nullptr;
};

}  // namespace tavrin
