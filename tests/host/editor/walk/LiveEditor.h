// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/program/RunningFile.h"

#include "host/editor/EditSession.h"
#include "host/editor/file/EditedFile.h"
#include "host/editor/frame/EditorBar.h"
#include "host/editor/frame/EditorFrame.h"
#include "host/window/PanelPages.h"

#include <QPushButton>
#include <QtTest>

/// A panel as the program runs it, with the editor around it, to be worked on by hand.
class LiveEditor
{
public:
    explicit LiveEditor(const QByteArray& text)
        : panel(text, kWindow),
          session(*panel.reload, RunningFile::catalogue(), text),
          file(panel.path, session)
    {
        panel.file->setTakeText([this](const QByteArray&) {
            file.look();
            return true;
        });
        begin();
    }

    static constexpr QSize kWindow{1100, 700};

    void begin()
    {
        m_frame = std::make_unique<norvo::EditorFrame>(session, file, window());
        settle();
    }
    void end() { m_frame.reset(); } ///< The panel is as without an editor.

    norvo::PanelWindow& window() const { return panel.running->window(); }
    norvo::PanelPages& pages() const { return panel.running->pages(); }
    QByteArray text() const { return session.document().text(); }

    template <class T>
    T* shown(const QString& name = {}) const
    {
        return allShown<T>(name).value(0);
    }
    /// On a scaled panel the pages are no part of the window, but of what it shows.
    template <class T>
    QList<T*> allShown(const QString& name = {}) const
    {
        QList<T*> all = window().findChildren<T*>(name);
        if (!window().isAncestorOf(&pages())) {
            all += pages().findChildren<T*>(name);
        }
        const auto isHidden = [](const T* one) { return !one->isVisible(); };
        all.erase(std::remove_if(all.begin(), all.end(), isHidden), all.end());
        return all;
    }
    static void settle()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
    static void click(QWidget* widget)
    {
        if (widget && widget->isVisible() && widget->isEnabled()) {
            QTest::mouseClick(widget, Qt::LeftButton);
            settle();
        }
    }
    QPushButton* key(const char* name) const
    {
        return m_frame->bar().findChild<QPushButton*>(name);
    }
    void openPane(const char* name) const
    {
        if (!key(name)->isChecked()) {
            click(key(name));
        }
    }

    RunningFile panel;
    norvo::EditSession session;
    norvo::EditedFile file;

private:
    std::unique_ptr<norvo::EditorFrame> m_frame;
};
