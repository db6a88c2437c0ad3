// What the tests of the plug-in share.

#ifndef KIVTESTS_KIVPLOTOUT_SUPPORT_H
#define KIVTESTS_KIVPLOTOUT_SUPPORT_H

#include "Failures.h"
#include "MarkerBuilder.h"
#include "TextIndexList.h"
#include "TextProcessor.h"
#include "TextProcessorOptions.h"

#include <QBuffer>

#include <boost/exception/get_error_info.hpp>

#include <gtest/gtest.h>

#include <string>

namespace KivSystem {

/// What the text writer leaves in its device. A failure is passed on to `failed`, if there is one.
template <class Failed = void (*)(const AssertionError &)>
std::string exportedText(const DocumentMak &document, const TextIndexList &list,
    const TextProcessorOptions &options = {}, Failed failed = nullptr)
{
    QBuffer device;
    device.open(QIODevice::WriteOnly);
    try {
        TextProcessor::exportDocument(document, &device, list, options);
    } catch (const AssertionError &error) {
        if constexpr (std::is_same_v<Failed, void (*)(const AssertionError &)>) {
            ADD_FAILURE() << error.what();
        } else {
            failed(error);
        }
    }
    return device.data().toStdString();
}

/// Expects that the failure names its throw site: a source of the plug-in and a full signature.
inline void expectThrowSite(const boost::exception &error, const std::string &source)
{
    const char *const *file = boost::get_error_info<boost::throw_file>(error);
    const char *const *function = boost::get_error_info<boost::throw_function>(error);
    const int *line = boost::get_error_info<boost::throw_line>(error);
    ASSERT_TRUE(file && function && line);
    EXPECT_EQ(*file, "../../Source/KivPlotOut/" + source);
    EXPECT_NE(std::string(*function).find('('), std::string::npos) << *function;
    EXPECT_NE(std::string(*function).find("KivSystem::"), std::string::npos) << *function;
    EXPECT_GT(*line, 0);
}

} // namespace KivSystem

#endif
