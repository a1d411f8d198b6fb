#pragma once

#include "settings/SettingFields.h"
#include "settings/SettingStore.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

/// What the command `settings` is made of: what it was told to set, and what it prints.
namespace cardreel::CommandLine {

struct SettingAssignment
{
    const SettingField* field;
    int value; ///< in the field's range
};

/// From "NAME=VALUE"; nothing, with the reason in `problem`, unless each names a setting that can be changed and a
/// value in its range.
std::optional<std::vector<SettingAssignment>> settingAssignments(const QStringList& texts, QString& problem);

/// What a run has changed, or would change.
struct SettingChanges
{
    enum class State { Saved, WouldBeSaved };
    State state;
    QString target;              ///< the file
    const SettingLoad& loaded;   ///< what was there before
    UnitSettingViewModel before; ///< means nothing when nothing could be loaded
    UnitSettingViewModel after;
    quint16 modelID = 0;
    std::vector<const SettingField*> fields{}; ///< whose values differ; all when nothing could be loaded
};

void printSettingsJson(const SettingLoad& loaded);
/// The record, then those of its settings that can be changed, as `model` has them, with the values that --set takes.
void printSettingsTable(const SettingLoad& loaded, const UnitSettingViewModel& model);
void printChangesJson(const SettingChanges& changes);
void printChangesTable(const SettingChanges& changes);

} // namespace cardreel::CommandLine
