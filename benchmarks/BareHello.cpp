// SPDX-License-Identifier: LGPL-3.0-or-later

#include <QApplication>
#include <QGridLayout>
#include <QLabel>

/// The least program that shows a text: what it does not draw it does not link either.
int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QWidget window;
    QGridLayout page(&window);
    page.addWidget(new QLabel("Hello!"));
    window.show();
    return QApplication::exec();
}
