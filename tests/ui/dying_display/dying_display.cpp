// A plugin for the programs that ends them as Qt does when the Wayland compositor is gone: with a
// few words, and then at once, past all that runs at an exit. It does so when the file is there
// that the environment variable KV408_DYING_DISPLAY names.

#include <QFile>
#include <QGenericPlugin>
#include <QTimer>

#include <unistd.h>

class DyingDisplay : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "dying_display.json")

public:
    QObject* create(const QString& /*name*/, const QString& /*details*/) override {
        auto* const timer = new QTimer;
        QObject::connect(timer, &QTimer::timeout, timer, [] {
            if (QFile::exists(qEnvironmentVariable("KV408_DYING_DISPLAY"))) {
                qWarning("The Wayland connection broke. Did the Wayland compositor die?");
                _exit(1);
            }
        });
        timer->start(50);
        return timer;
    }
};

#include "dying_display.moc"
