#include "base/ExtensionOrder.h"

#include <QVariantMap>

#include <array>

namespace {
constexpr std::array<int, 18> kExtensionOrder = {1,  2,  3,  50,  51,  52,  53,  54,  55,
                                                 56, 57, 58, 610, 611, 612, 613, 614, 615};

QString typeForExtension(int number)
{
    if (number >= 1 && number <= 3)
        return QStringLiteral("FON");
    if (number >= 50 && number <= 58)
        return QStringLiteral("S0");
    return QStringLiteral("DECT");
}
} // namespace

namespace FBBoxPhoneHelper {

QString extensionNumberForIndex(int index)
{
    if (index < 0 || index >= int(kExtensionOrder.size()))
        return QStringLiteral("0");
    return QString::number(kExtensionOrder[size_t(index)]);
}

int indexForExtensionNumber(int number)
{
    for (size_t i = 0; i < kExtensionOrder.size(); ++i)
        if (kExtensionOrder[i] == number)
            return int(i);
    return number;
}

QVariantList convertIntoNewExtensions(const QVariantList& devices)
{
    QVariantList result;
    for (qsizetype i = 0; i < devices.size(); ++i) {
        const QVariant& entry = devices.at(i);
        if (entry.typeId() == QMetaType::QVariantMap) {
            result.append(entry);
            continue;
        }
        const QVariantList pair = entry.toList();
        const QString intern = extensionNumberForIndex(int(i));
        if (pair.isEmpty() || intern == u"0")
            continue;
        result.append(QVariantMap{
            {QStringLiteral("Intern"), intern},
            {QStringLiteral("Title"), pair.value(0).toString()},
            {QStringLiteral("Typ"), typeForExtension(intern.toInt())},
            {QStringLiteral("Show"), pair.value(1, true).toBool()},
        });
    }
    return result;
}

} // namespace FBBoxPhoneHelper
