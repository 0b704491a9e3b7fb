#pragma once

#include <QMenu>

class NotificationCenter;
class StreamListener;
class TNPreferencesManager;

// The current location's shown extensions with the call monitor's state image of each; choosing
// one asks for an internal call to it. Rebuilt on "UPDATEEXTENSIONMENU" and "ACTIVATESETTINGS".
class ExtensionsMenu : public QMenu
{
    Q_OBJECT
public:
    ExtensionsMenu(NotificationCenter& center, TNPreferencesManager& manager, StreamListener& listener,
                   QWidget* parent = nullptr);

    // expandExtensionMenu
    void rebuild();
    // The image name for an extension state; a missing state is "status-none".
    static QString imageNameForState(int state);

signals:
    void callExtension(const QString& intern, const QString& title);

private:
    TNPreferencesManager& m_manager;
    StreamListener& m_listener;
};
