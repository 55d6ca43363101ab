// SPDX-License-Identifier: LGPL-3.0-or-later

#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace {

template <class Widget>
Widget* textOf(const QString& text, int points)
{
    auto* const made = new Widget(text);
    made->setFont(QFont("Arial", points));
    return made;
}

/// What examples/hello shows, made by hand, in a window as large.
void showWhole(QWidget& window, QGridLayout& page)
{
    page.addWidget(textOf<QLabel>("Hello! The load here is 0.00", 32));
    page.addWidget(textOf<QPushButton>("Show it in red", 24));
    window.resize(800, 480);
}

} // namespace

/// The least program that shows a text: what it does not draw it does not link either. With an
/// argument: the least one that shows the whole of it.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QWidget window;
    QGridLayout page(&window);
    if (argc > 1) {
        showWhole(window, page);
    } else {
        page.addWidget(new QLabel("Hello!"));
    }
    window.show();
    return QApplication::exec();
}
