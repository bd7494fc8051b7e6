#include "TavrinClean/Program/MainWindow.h"

#include "TavrinClean/Kit/Text.h"
#include "TavrinClean/Theme/Brand.h"
#include "TavrinClean/Theme/BrandBackground.h"
#include "TavrinCore/Strings.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <memory>

namespace tavrin {
namespace {

constexpr QSize usualSize(1120, 740);
constexpr QSize smallestSize(940, 620);

/// Asked for an item's name before its basic types are known, the toolkit finds none, and never looks again: a screen
/// reader would meet a window without a word. So they are made known before there is an item to ask for.
void registerBasicTypes(QQmlEngine& engine) {
    QQmlComponent component(&engine);
    component.setData("import QtQuick; QtObject {}", QUrl());
}

}  // namespace

MainWindow::MainWindow(QQmlEngine& engine) : engine_(engine) {
    registerBasicTypes(engine);
    ground_ = new BrandBackground(contentItem());
    setTitle(qtText(S::appName));
    setColor(Brand::deepest());
    setMinimumSize(smallestSize);
    resize(usualSize);
    fill();
}

bool MainWindow::furnish(const QUrl& url) {
    engine_.setIncubationController(incubationController());
    QQmlComponent component(&engine_, url);
    std::unique_ptr<QObject> made(component.create());
    auto* const item = qobject_cast<QQuickItem*>(made.get());
    if (item == nullptr) {
        qWarning("%s", qPrintable(component.errorString()));
        return false;
    }
    made.release()->setParent(this);
    content_ = item;
    content_->setParentItem(contentItem());
    content_->setFocus(true);
    fill();
    return true;
}

void MainWindow::bringToFront() {
    setWindowStates(windowStates() & ~Qt::WindowMinimized);
    // To show() a window would also give it its usual size.
    setVisible(true);
    raise();
    requestActivate();
}

void MainWindow::resizeEvent(QResizeEvent* event) {
    QQuickWindow::resizeEvent(event);
    fill();
}

void MainWindow::fill() {
    ground_->setSize(size());
    if (content_ != nullptr) content_->setSize(size());
}

}  // namespace tavrin
