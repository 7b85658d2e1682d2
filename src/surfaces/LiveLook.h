#pragma once

namespace velmo {

class BubbleController;
class Prefs;
class SecondBubbleController;

/// Bubbles that are dressed anew as soon as a setting of their look changes, whoever changes it. Main thread.
namespace LiveLook {

/// For as long as the bubbles live; all borrowed.
void follow(const Prefs& prefs, BubbleController& first, SecondBubbleController& second);

} // namespace LiveLook

} // namespace velmo
