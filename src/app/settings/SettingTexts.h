#pragma once

#include "settings/SettingFields.h"
#include "settings/SettingStore.h"

#include <QString>

#include <vector>

namespace cardreel {

/// What the sheet calls the settings, how it groups them, and what it says of them. Interface thread.
namespace SettingTexts {

struct Group
{
    QString title;
    std::vector<const SettingField*> fields;
};
/// All settings, grouped as a recorder's menu has them.
std::vector<Group> groups();

/// With the key that leads to it marked.
QString label(const SettingField& field);
/// The same without the mark.
QString name(const SettingField& field);
/// A value, also one that isn't known.
QString value(const SettingField& field, const UnitSettingViewModel& model);
QString unknownValue(int value);
/// Why the setting isn't saved on a card of this model; empty when it is.
QString note(const SettingField& field, quint16 modelID);
/// Which file was read and what it is worth.
QString source(const SettingLoad& loaded);

} // namespace SettingTexts

} // namespace cardreel
