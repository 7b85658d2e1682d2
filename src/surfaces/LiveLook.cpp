#include "surfaces/LiveLook.h"

#include "settings/Prefs.h"
#include "surfaces/BubbleController.h"
#include "surfaces/SecondBubbleController.h"

#include <QStringList>

namespace velmo::LiveLook {

namespace {

QStringList keysOfBoth(const Prefs& prefs) {
    return {prefs.cornerFraction.key(), prefs.ringStyle.key(),     prefs.ringWeight.key(),      prefs.softShadow.key(),
            prefs.ringIndex.key(),      prefs.ringCustomHex.key(), prefs.chameleonPalette.key()};
}

QStringList keysOfFirst(const Prefs& prefs) {
    return keysOfBoth(prefs) + QStringList{prefs.bubbleSize.key(),    prefs.bubbleShape.key(),
                                           prefs.mirror.key(),        prefs.showName.key(),
                                           prefs.presenterName.key(), prefs.presenterRole.key()};
}

QStringList keysOfSecond(const Prefs& prefs) {
    return keysOfBoth(prefs) +
           QStringList{prefs.secondBubbleSize.key(), prefs.secondBubbleShape.key(), prefs.secondMirror.key()};
}

} // namespace

void follow(const Prefs& prefs, BubbleController& first, SecondBubbleController& second) {
    QObject::connect(&prefs, &Prefs::changed, &first, [&first, keys = keysOfFirst(prefs)](const QString& key) {
        if (keys.contains(key)) {
            first.applyPrefs();
        }
    });
    QObject::connect(&prefs, &Prefs::changed, &second, [&second, keys = keysOfSecond(prefs)](const QString& key) {
        if (keys.contains(key)) {
            second.applyPrefs();
        }
    });
}

} // namespace velmo::LiveLook
