#pragma once

#include <QVariant>
#include <QWidget>

namespace Helmsway {

/// What a mark says at a glance. It stands beside a sign and a word, never instead of them.
enum class Tone {
  Plain,  ///< nothing to say
  Good,
  Bad,
  Waiting  ///< not settled yet
};

/// The colour pair of a tone as data of a model, for `Qt::ForegroundRole` and `Qt::BackgroundRole`; invalid for
/// `Tone::Plain` and other roles. Both colours are fixed, so that they go with every palette.
QVariant ToneData(Tone tone, int role);

/// Gives a widget, a label for example, the colour pair, or its usual colours for `Tone::Plain`.
void ApplyTone(QWidget& widget, Tone tone);

}  // namespace Helmsway
