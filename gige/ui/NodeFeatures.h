#ifndef TELVO_GIGE_UI_NODEFEATURES_H
#define TELVO_GIGE_UI_NODEFEATURES_H

#include "Feature.h"
#include "NodeMap.h"

#include <memory>

namespace gige::ui
{

/// The categories of a device's description, from its root down. Categories that contain each other
/// are cut, and so is what lies deeper than any sensible description.
/// @param map  must outlive the features
FeatureNode featuresOf(const genapi::NodeMap& map);

/// One node, whether it is in a category or not.
/// @param node  must outlive the feature
std::unique_ptr<Feature> featureOf(genapi::Node& node);

} // namespace gige::ui

#endif
