#include "box/FBBoxPhoneHelper.h"

#include "base/NumberForms.h"

#include <QVariantMap>

#include <array>

namespace FBBoxPhoneHelper {

QString cleanNumber(const QString& number)
{
    return methods::cleanNumber(number);
}

} // namespace FBBoxPhoneHelper
