#include "CutPicture.h"

#include <QDomDocument>
#include <QMap>
#include <QXmlStreamWriter>

namespace KivSystem {

namespace {

constexpr double kMargin = 2; // cm around the cloth

QString text(double value)
{
    return QString::number(value, 'g', 12);
}

double number(const QDomElement &element, const char *name)
{
    return element.attribute(QLatin1String(name)).toDouble();
}

void set(QDomElement &element, const char *name, const QString &value)
{
    element.setAttribute(QLatin1String(name), value);
}

class Picture
{
public:
    explicit Picture(QDomDocument &document)
        : m_document(document)
        , m_root(document.documentElement())
    {}

    void add()
    {
        const double length = number(m_root, "tissuL");
        const double width = number(m_root, "tissuW");
        set(m_root, "xmlns", QStringLiteral("http://www.w3.org/2000/svg"));
        set(m_root, "xmlns:xlink", QStringLiteral("http://www.w3.org/1999/xlink"));
        set(m_root, "viewBox",
            QStringLiteral("%1 %1 %2 %3")
                .arg(text(-kMargin), text(length + 2 * kMargin), text(width + 2 * kMargin)));

        m_shown = m_document.createElement(QStringLiteral("g"));
        set(m_shown, "transform", QStringLiteral("translate(0,%1) scale(1,-1)").arg(text(width)));
        set(m_shown, "fill", QStringLiteral("none"));
        set(m_shown, "stroke-width", QStringLiteral("0.15"));
        addRectangle(length, width);
        for (QDomElement child = m_root.firstChildElement(); !child.isNull();
             child = child.nextSiblingElement()) {
            addChild(child, width);
        }
        addIdleWay();
        m_root.appendChild(m_shown);
    }

private:
    void addChild(QDomElement &child, double width)
    {
        if (child.tagName() == QLatin1String("object")) {
            addObject(child);
        } else if (child.tagName() == QLatin1String("external")) {
            for (QDomElement hole = child.firstChildElement(); !hole.isNull();
                 hole = hole.nextSiblingElement()) {
                set(hole, "r", QStringLiteral("0.3"));
                set(hole, "stroke", QStringLiteral("darkorange"));
                show(hole);
            }
        } else if (child.tagName() == QLatin1String("M69")) {
            const QString x = child.attribute(QStringLiteral("tissuL"));
            addStroke(QStringLiteral("M %1,0 L %1,%2").arg(x, text(width)), "purple", "1,1");
        } else if (child.tagName() == QLatin1String("scrap")) {
            addWaste(child);
        }
    }

    void addObject(QDomElement &object)
    {
        for (QDomElement child = object.firstChildElement(); !child.isNull();
             child = child.nextSiblingElement()) {
            if (child.tagName() == QLatin1String("path")) {
                addPath(child);
            } else if (child.tagName() == QLatin1String("text")) {
                addText(child);
            }
        }
    }

    void addPath(QDomElement &path)
    {
        const QString kind = path.attribute(QStringLiteral("t"));
        QString data = path.text();
        const char *color = "black";
        if (path.hasAttribute(QStringLiteral("drill"))) {
            // A cross on the hole.
            data = path.attribute(QStringLiteral("drill")) +
                   QStringLiteral(" m -0.3,0 h 0.6 m -0.3,-0.3 v 0.6");
            color = "darkorange";
        } else if (kind == QLatin1String("notch")) {
            color = "red";
        } else if (kind == QLatin1String("internal")) {
            color = "blue";
        }
        set(path, "d", data);
        set(path, "stroke", QLatin1String(color));
        show(path);
    }

    // Letters stand upright in a picture whose y is turned.
    void addText(QDomElement &line)
    {
        constexpr double centimetresOfPoint = 0.03528;
        constexpr double likeTheStrokeFont = 1; // in width: half a cell a character
        const QString x = line.attribute(QStringLiteral("x"));
        const QString y = line.attribute(QStringLiteral("y"));
        set(line, "font-size",
            text(number(line, "fontSize") * centimetresOfPoint * likeTheStrokeFont));
        set(line, "font-family", QStringLiteral("monospace"));
        // The place is the middle of the first letter.
        set(line, "dominant-baseline", QStringLiteral("central"));
        set(line, "dx", QStringLiteral("-0.3em"));
        set(line, "fill", QStringLiteral("green"));
        set(line, "transform",
            QStringLiteral("matrix(1 0 0 -1 0 %1) rotate(%2 %3 %4)")
                .arg(text(2 * number(line, "y")), text(-number(line, "angle")), x, y));
        show(line);
    }

    void addWaste(const QDomElement &scrap)
    {
        QString data;
        for (QDomElement cut = scrap.firstChildElement(); !cut.isNull();
             cut = cut.nextSiblingElement()) {
            data += cut.text() + QLatin1Char(' ');
        }
        addStroke(data, "brown", "");
    }

    void addRectangle(double length, double width)
    {
        addStroke(QStringLiteral("M 0,0 L %1,0 L %1,%2 L 0,%2 Z").arg(text(length), text(width)),
            "silver", "");
    }

    // From one object to the next, by the places at which their first paths start.
    void addIdleWay()
    {
        QString data;
        for (QDomElement object = m_root.firstChildElement(QStringLiteral("object"));
             !object.isNull(); object = object.nextSiblingElement(QStringLiteral("object"))) {
            const QDomElement path = object.firstChildElement(QStringLiteral("path"));
            const QString start =
                path.attribute(QStringLiteral("d")).section(QLatin1Char(' '), 1, 1);
            if (!start.isEmpty()) {
                data += (data.isEmpty() ? QLatin1String("M 0,0 L ") : QLatin1String(" L ")) + start;
            }
        }
        addStroke(data, "deepskyblue", "0.6,0.6");
    }

    void addStroke(const QString &data, const char *color, const char *dashes)
    {
        QDomElement stroke = m_document.createElement(QStringLiteral("path"));
        set(stroke, "d", data);
        set(stroke, "stroke", QLatin1String(color));
        if (*dashes != '\0') {
            set(stroke, "stroke-dasharray", QLatin1String(dashes));
        }
        m_shown.appendChild(stroke);
    }

    void show(QDomElement &element)
    {
        const QString id = QStringLiteral("e%1").arg(++m_count);
        set(element, "id", id);
        QDomElement use = m_document.createElement(QStringLiteral("use"));
        set(use, "xlink:href", QLatin1Char('#') + id);
        m_shown.appendChild(use);
    }

    QDomDocument &m_document;
    QDomElement m_root;
    QDomElement m_shown;
    int m_count = 0;
};

void write(QXmlStreamWriter &out, const QDomElement &element)
{
    out.writeStartElement(element.tagName());
    QMap<QString, QString> attributes;
    const QDomNamedNodeMap map = element.attributes();
    for (int i = 0; i < map.count(); ++i) {
        attributes.insert(map.item(i).nodeName(), map.item(i).nodeValue());
    }
    for (auto attribute = attributes.cbegin(); attribute != attributes.cend(); ++attribute) {
        out.writeAttribute(attribute.key(), attribute.value());
    }
    for (QDomNode child = element.firstChild(); !child.isNull(); child = child.nextSibling()) {
        if (child.isElement()) {
            write(out, child.toElement());
        } else {
            out.writeCharacters(child.nodeValue());
        }
    }
    out.writeEndElement();
}

} // namespace

void addPicture(QDomDocument &document)
{
    Picture(document).add();
}

QByteArray xmlText(const QDomDocument &document)
{
    QByteArray bytes;
    QXmlStreamWriter out(&bytes);
    out.setAutoFormatting(true);
    out.setAutoFormattingIndent(1);
    out.writeStartDocument();
    write(out, document.documentElement());
    out.writeEndDocument();
    return bytes;
}

} // namespace KivSystem
