// Small drawn signs: icons of the kinds of objects, marks of rows, signs of message boxes.
#pragma once

#include <QIcon>
#include <QRectF>
#include <string>

#include "platform/controls.h"
#include "platform/host.h"

class QPainter;

namespace tolvex::desktop {

// The sign of an image key ("C0201500", "stdOpen", …); a plain sheet for an unknown key.
void paintGlyph(QPainter& painter, const QRectF& box, const std::string& key);
QIcon glyphIcon(const std::string& key);

void paintMark(QPainter& painter, const QRectF& box, ui::Mark mark);
void paintCheck(QPainter& painter, const QRectF& box, bool checked, bool enabled);
void paintSign(QPainter& painter, const QRectF& box, Icon icon);

}  // namespace tolvex::desktop
