#pragma once

#include <QGroupBox>
#include <QString>

namespace Helmsway {

/// An opaque panel. With a caption it has a border, and the caption stands on it; its contents stand where they are
/// put, not below the caption.
class FormPanel final : public QGroupBox {
  Q_OBJECT

 public:
  using QGroupBox::QGroupBox;

  void SetCaption(const QString& caption);
  /// Place of the caption, at the top left; empty without one.
  QRect CaptionRect() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString caption_;
};

}  // namespace Helmsway
