// What the tests of the cut formats share: a cutter whose configuration and document are texts.

#ifndef KIVTESTS_KIVPLOTOUT_CUTSUPPORT_H
#define KIVTESTS_KIVPLOTOUT_CUTSUPPORT_H

#include "CutProcessor.h"
#include "MarkerBuilder.h"
#include "ScriptedUserInterface.h"

#include "KivCore/Application.h"
#include "KivMarker/ShareGlobales.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>

namespace KivSystem {

class TestCutter : public NC::CutProcessor
{
public:
    TestCutter() : CutProcessor("/X.xml") {}

    void setDocument(const QByteArray &svg)
    {
        documents.resize(1);
        ASSERT_TRUE(documents[0].setContent(svg)) << svg.toStdString();
    }

    using CutProcessor::currentDocument;
    using CutProcessor::documents;
    using CutProcessor::exportPoint;
    using CutProcessor::formatPoint;
    using CutProcessor::getSvgOpt;
    using CutProcessor::precision;
    using CutProcessor::stream;
    using CutProcessor::synchro;
    using CutProcessor::writePoint;
    using CutProcessor::xExpression;
    using CutProcessor::yExpression;
};

/// Begins with the default cut settings, but without notches and internal lines.
class CutTest : public testing::Test
{
protected:
    CutTest()
        : application(std::make_unique<ScriptedUserInterface>(), QDir(plugins.path()))
        , settings(*CDbMarkerShareGlobales::instance())
    {
        QDir(plugins.path()).mkpath("io/CutFileConfig");
        CutSettings plain;
        plain.cutOrderCrans = NotchNone;
        plain.cutInternalOrder = CutLineNone;
        settings.setCutSettings(plain);
    }

    ~CutTest() override { settings.setCutSettings(CutSettings()); }

    void setConfig(const QByteArray &text)
    {
        QFile file(plugins.filePath("io/CutFileConfig/X.xml"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    /// The file of a document, under a configuration.
    std::string cut(const QByteArray &config, const QByteArray &svg)
    {
        setConfig(config);
        TestCutter cutter;
        cutter.setDocument(svg);
        QBuffer device;
        device.open(QIODevice::WriteOnly);
        EXPECT_TRUE(cutter.buildDocument(document, &device));
        return device.data().toStdString();
    }

    /// The same for what is inside `polygone`, and for the inside of one piece.
    std::string cutPiece(const QByteArray &polygone, const QByteArray &object)
    {
        return cut("<c><polygone>" + polygone + "</polygone></c>",
            "<svg><object>" + object + "</object></svg>");
    }

    const QTemporaryDir plugins;
    const KivApplication application;
    CDbMarkerShareGlobales &settings;
    const DocumentMak document{nullptr}; // a cutter that has its documents needs no marker
};

} // namespace KivSystem

#endif
