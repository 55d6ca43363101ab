// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QString>

/// What every plug-in and the host spell alike: the names of the catalogue's categories, of the
/// widget parameter group and of the placement parameters that the host owns. One header by
/// agreement, as every source of a plug-in includes it.
namespace norvo {

inline const QString kCategoryGeneral = QStringLiteral("General");
inline const QString kCategorySystem = QStringLiteral("system");
inline const QString kCategoryConverters = QStringLiteral("converters");
inline const QString kCategoryDataProcessing = QStringLiteral("dataProcessing");
inline const QString kCategoryIO = QStringLiteral("IO");
inline const QString kCategorySensors = QStringLiteral("sensors");
inline const QString kCategoryBus = QStringLiteral("bus");
inline const QString kCategoryFilesystem = QStringLiteral("filesystem");
inline const QString kCategoryFilters = QStringLiteral("filters");
inline const QString kCategoryMaths = QStringLiteral("maths");
inline const QString kCategoryAlgorithms = QStringLiteral("algorithms");
inline const QString kCategoryDebug = QStringLiteral("debug");
inline const QString kCategoryLogic = QStringLiteral("logic");
inline const QString kCategoryString = QStringLiteral("string");
inline const QString kCategoryNetwork = QStringLiteral("network");
inline const QString kCategoryArray = QStringLiteral("array");
inline const QString kCategoryAudio = QStringLiteral("audio");
inline const QString kCategoryConstant = QStringLiteral("constant");
inline const QString kCategoryRos = QStringLiteral("ros");
inline const QString kCategoryDefault = QStringLiteral("General");
inline const QString kCategoryGui = QStringLiteral("GUI");

inline const QString kWidgetGroup = QStringLiteral("widget");

inline const QString kWidgetRow = QStringLiteral("widget/row");
inline const QString kWidgetColumn = QStringLiteral("widget/column");
inline const QString kWidgetRowspan = QStringLiteral("widget/rowspan");
inline const QString kWidgetColspan = QStringLiteral("widget/colspan");
inline const QString kWidgetArea = QStringLiteral("widget/area");

} // namespace norvo
