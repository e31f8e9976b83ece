#include "SettingWriter.h"

#include "ToolError.h"

#include <algorithm>

namespace telvo
{

namespace
{

std::vector<Assignment> lastOfEach(const std::vector<Assignment>& assignments)
{
    std::vector<Assignment> last;
    for (const Assignment& assignment : assignments) {
        std::erase_if(
            last, [&](const Assignment& earlier) { return earlier.setting == assignment.setting; });
        last.push_back(assignment);
    }
    return last;
}

/// "1 to 19999 us, in steps of 4", as far as it is known.
std::string limitsText(const std::string& range, const SettingFacts& facts)
{
    const std::string separator = range.empty() || facts.step.empty() ? "" : ", ";
    const std::string unit = range.empty() || facts.unit.empty() ? "" : ' ' + facts.unit;
    return range + unit + separator + facts.step;
}

/// Whether the camera has this value now.
bool writeOnce(const Assignment& assignment, std::int32_t cameraId)
{
    if (!writeSetting(assignment, cameraId)) {
        return false;
    }
    const auto taken = tryReadSetting(*assignment.setting, cameraId);
    return !taken || isValueOf(assignment, *taken);
}

/// Round after round, as long as each round brings one more home.
void writeAll(std::vector<Assignment> open, std::int32_t cameraId)
{
    // The table has size before rate before exposure, which most cameras take at once.
    std::ranges::sort(open, {}, &Assignment::setting);
    std::size_t before = 0;
    do {
        before = open.size();
        std::erase_if(
            open, [&](const Assignment& assignment) { return writeOnce(assignment, cameraId); });
    } while (!open.empty() && open.size() < before);
}

} // namespace

bool SettingOutcome::isAsAsked() const
{
    return !refused && (!taken || isValueOf(asked, *taken));
}

std::string SettingOutcome::text() const
{
    if (!taken) {
        return asked.text;
    }
    if (isAsAsked()) {
        return taken->withUnit();
    }
    const std::string limits = taken->limits.empty() ? "" : " (" + taken->limits + ')';
    return taken->withUnit() + " instead of " + asked.text + limits;
}

std::optional<SettingText> readWithFacts(const Setting& setting, std::int32_t cameraId,
                                         const AllFacts& facts)
{
    std::optional<SettingText> text = tryReadSetting(setting, cameraId);
    if (text) {
        text->unit = setting.unit;
    }
    const auto known = facts.find(&setting);
    if (text && known != facts.end()) {
        text->unit = known->second.unit;
        text->limits = limitsText(text->limits, known->second);
    }
    return text;
}

std::vector<SettingOutcome> writeSettings(const std::vector<Assignment>& assignments,
                                          std::int32_t cameraId, const AllFacts& facts)
{
    const std::vector<Assignment> wanted = lastOfEach(assignments);
    writeAll(wanted, cameraId);
    std::vector<SettingOutcome> outcomes;
    for (const Assignment& assignment : wanted) {
        SettingOutcome outcome{.asked = assignment,
                               .taken = readWithFacts(*assignment.setting, cameraId, facts)};
        outcome.refused = !outcome.isAsAsked() && !writeSetting(assignment, cameraId);
        outcomes.push_back(outcome);
    }
    return outcomes;
}

void requireTaken(const std::vector<SettingOutcome>& outcomes)
{
    const auto refused = std::ranges::find_if(outcomes, &SettingOutcome::refused);
    if (refused == outcomes.end()) {
        return;
    }
    const std::string name(refused->asked.setting->name);
    if (!refused->taken) {
        throw Failure("the camera has no " + name + "; leave it out");
    }
    const std::string& limits = refused->taken->limits;
    throw Failure("the camera refuses " + name + " = " + refused->asked.text +
                  (limits.empty() ? "; 'telvo log' shows why" : "; it takes values " + limits));
}

void requireAsAsked(const std::vector<SettingOutcome>& outcomes)
{
    requireTaken(outcomes);
    const auto other = std::ranges::find_if_not(outcomes, &SettingOutcome::isAsAsked);
    if (other != outcomes.end()) {
        throw Failure("the camera takes " + std::string(other->asked.setting->name) + ' ' +
                      other->text());
    }
}

} // namespace telvo
