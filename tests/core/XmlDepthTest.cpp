// The look at the nesting of a text.
#include "core/XmlDepth.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace orvel::core {
namespace {

using namespace std::string_literals;

struct DepthRow {
    std::string text;
    std::size_t depth;
};

void expectDepths(std::initializer_list<DepthRow> rows) {
    for (const DepthRow& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(xmlDepth(row.text), row.depth);
    }
}

TEST(XmlDepth, CountsTheLevelsOfWellFormedText) {
    expectDepths({
        {"", 0},
        {" \r\n\t ", 0},
        {"<a/>", 1},
        {"<a />", 1},
        {"<a></a>", 1},
        {"<a></a >", 1},
        {"<a><b/></a>", 2},
        {"<a><b/><b/><b/></a>", 2},
        {"<a><b><c/></b><b></b></a>", 3},
        {"<a><b></b><b><c></c></b></a>", 3},
        {"<a/><b><c/></b>", 2},
        {"\xEF\xBB\xBF<a><b/></a>", 2},
        {"<a>text<b>more text</b>end</a>", 2},
        {"<a>1 > 0 / 2<b/></a>", 2},
    });
}

TEST(XmlDepth, SeesNoMarkupInQuotedValues) {
    expectDepths({
        {"<a x='<b><c>'/>", 1},
        {"<a x=\"<b><c>\"><b/></a>", 2},
        {"<a x=\"'\" y='\"'><b x = '/>'/></a>", 2},
        {"<a x='</a>'><b/></a>", 2},
        {"<a x='\n>\t'><b y=\"/\"></b></a>", 2},
        {"<a x=''y=''><b/></a>", 2},
        {"<a x='&lt;&quot;'><b/></a>", 2},
    });
}

TEST(XmlDepth, SeesNoMarkupInCommentsSectionsAndInstructions) {
    expectDepths({
        {"<!-- <a><b><c> --><a/>", 1},
        {"<a><!--<b><c>--><b/></a>", 2},
        {"<a><!-->--><b/></a>", 2},
        {"<a><!-- - -- ---><b/></a>", 2},
        {"<a><![CDATA[<b><c></a>]]><b/></a>", 2},
        {"<a><![CDATA[]]]]><b/></a>", 2},
        {"<?xml version=\"1.0\" encoding=\"utf-8\"?><a/>", 1},
        {"<?pi <b><c> ?><a/>", 1},
        {"<a><?"
         "?><b/></a>",
         2},
        {"<!DOCTYPE a [<!ELEMENT b (c)><!ELEMENT d (e)>]><a/>", 1},
        {"<!DOCTYPE a [[>]<b><c>]><a/>", 1},
        {"<!DOCTYPE a ]><a/>", 1},
        {"<!DOCTYPE a><a><b/></a>", 2},
    });
}

TEST(XmlDepth, EndsAnUnknownDeclarationAtTheNextAngle) {
    expectDepths({
        {"<!ELEMENT a><a/>", 1},
        {"<!DOCTYPE[><a><b/></a>", 2},
        {"<!DOCTYPE[<a>]><b/>", 0},
        {"<a><![cdata[><b/></a>", 2},
        {"<a><!-><b/></a>", 2},
        {"<a><!><b/></a>", 2},
    });
}

TEST(XmlDepth, TakesNamesAsTheReaderDoes) {
    expectDepths({
        {"<a<b<c/>", 1},
        {"<a=\"'><b/></a>", 2},
        {"<a \"x\"='1'><b/></a>", 2},
        {"<!a<b><a/>", 1},
        {"<a></a<b><c/>", 1},
        {"<a><b></anything></whatever><c/>", 2},
        {"<\xC3\xA9><\xFF/></\xC3\xA9>", 2},
    });
}

TEST(XmlDepth, StopsWhereTheReaderStops) {
    expectDepths({
        {"<a>\0<b><c>"s, 1},
        {"\0<a>"s, 0},
        {"<a/>\0<b><c/></b>"s, 1},
        {"<a x='\0'><b/></a>"s, 1},
        {"text<a><b/></a>", 0},
        {"<a/>text<b><c/></b>", 1},
        {"<a x><b/></a>", 1},
        {"<a x=1><b/></a>", 1},
        {"<a x='1\"><b/></a>", 1},
        {"<a x='1' =><b/></a>", 1},
        {"<a / ><b/></a>", 1},
        {"<a?><b/></a>", 1},
        {"<a></a x><b><c/></b>", 1},
        {"<a/></a><b><c/></b>", 1},
        {"<a>< b><c/></b></a>", 2},
    });
}

TEST(XmlDepth, CountsWhatIsOpenInUnterminatedText) {
    expectDepths({
        {"<", 1},
        {"<a", 1},
        {"<a ", 1},
        {"<a x", 1},
        {"<a x=", 1},
        {"<a x='", 1},
        {"<a/", 1},
        {"<a>", 1},
        {"<a><", 2},
        {"<a></", 1},
        {"<a></a", 1},
        {"<a><b>", 2},
        {"<a><b><!-- <c>", 2},
        {"<a><b><![CDATA[ <c>", 2},
        {"<a><b><? <c>", 2},
        {"<a><b><!DOCTYPE [ <c>", 2},
        {"<a><b><! ", 2},
        {"<!", 0},
        {"<?", 0},
        {"<!-", 0},
    });
}

TEST(XmlDepth, CountsAMillionLevels) {
    constexpr std::size_t LEVELS = 1'000'000;
    std::string text;
    for (std::size_t i = 0; i < LEVELS; ++i)
        text += "<a>";
    EXPECT_EQ(xmlDepth(text), LEVELS);
    for (std::size_t i = 0; i < LEVELS; ++i)
        text += "</a>";
    EXPECT_EQ(xmlDepth(text), LEVELS);
}

}  // namespace
}  // namespace orvel::core
