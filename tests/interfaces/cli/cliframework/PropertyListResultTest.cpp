// A flat list of properties, in every format.
#include "interfaces/cli/cliframework/PropertyListResult.h"

#include "interfaces/cli/cliframework/CliFrameworkTypes.h"
#include "interfaces/cli/cliframework/SimpleResult.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>

namespace {

using namespace cli::framework;

PropertyListResult drive() {
    PropertyListResult list;
    list.setName("Drive 0");
    list.insert("Name (x)", "A1");
    list.insert("Count", "3");
    return list;
}

TEST(PropertyListResult, RendersTheDriveAsText) {
    EXPECT_EQ(drive().outputText(), "Name (x): A1\n"
                                    "Count: 3\n");
    EXPECT_EQ(drive().outputTextTable(), "Name (x): A1\n"
                                         "Count: 3\n");
}

TEST(PropertyListResult, RendersTheDriveAsXmlWithBracketsInTheTag) {
    EXPECT_EQ(drive().outputXml(), "<Drive_0>\n"
                                   "\t<Name_(x)>A1</Name_(x)>\n"
                                   "\t<Count>3</Count>\n"
                                   "</Drive_0>\n");
}

TEST(PropertyListResult, RendersTheDriveAsJsonIndentedByOneTab) {
    EXPECT_EQ(drive().outputJson(), "\t{\n"
                                    "\t\t\"Name (x)\":\"A1\",\n"
                                    "\t\t\"Count\":3\n"
                                    "\t}");
}

TEST(PropertyListResult, RendersTheDriveAsCsv) {
    EXPECT_EQ(drive().outputCSV(), "Name (x),A1,Count,3,");
}

TEST(PropertyListResult, RendersTheDriveAsEsxKeyValueList) {
    EXPECT_EQ(drive().outputEsxXml(), std::string(ESX_HEAD) +
                                          "<list type=\"structure\">"
                                          "<structure typeName=\"KeyValue\">"
                                          "<field name=\"Attribute Name\">"
                                          "<string>Name (x)</string></field>"
                                          "<field name=\"Value\"><string>A1</string></field>"
                                          "</structure>"
                                          "<structure typeName=\"KeyValue\">"
                                          "<field name=\"Attribute Name\">"
                                          "<string>Count</string></field>"
                                          "<field name=\"Value\"><string>3</string></field>"
                                          "</structure>"
                                          "</list></output>");
}

TEST(PropertyListResult, BeginsItsEsxFormWithTheDocumentHead) {
    const std::string esx = PropertyListResult().outputEsxXml();
    EXPECT_EQ(esx.substr(0, 43), "<?xml version=\"1.0\"?><output xmlns=\"http://");
    const std::string ending =
        "/Products/ESX/5.0/esxcli/\"><list type=\"structure\"></list></output>";
    ASSERT_GT(esx.size(), ending.size());
    EXPECT_EQ(esx.substr(esx.size() - ending.size()), ending);
}

TEST(PropertyListResult, RendersNothingInEveryFormat) {
    const PropertyListResult empty;
    EXPECT_EQ(empty.outputText(), "No results\n");
    EXPECT_EQ(empty.outputTextTable(), "No results\n");
    EXPECT_EQ(empty.outputXml(), "<Root></Root>\n");
    EXPECT_EQ(empty.outputJson(), "\t{\n\t}");
    EXPECT_EQ(empty.outputCSV(), "");
    EXPECT_EQ(empty.outputEsxXml(),
              std::string(ESX_HEAD) + "<list type=\"structure\"></list></output>");
}

TEST(PropertyListResult, KeepsPropertiesOfOneNameInOrder) {
    PropertyListResult list;
    list.insert("b", "1");
    list.insert("a", "2");
    list.insert("b", "3");
    EXPECT_EQ(list.getCount(), 3U);
    EXPECT_EQ(list.outputText(), "b: 1\na: 2\nb: 3\n");
    EXPECT_EQ(list.outputXml(), "<Root>\n\t<b>1</b>\n\t<a>2</a>\n\t<b>3</b>\n</Root>\n");
    EXPECT_EQ(list.outputJson(), "\t{\n\t\t\"b\":1,\n\t\t\"a\":2,\n\t\t\"b\":3\n\t}");
    EXPECT_EQ(list.outputCSV(), "b,1,a,2,b,3,");
}

TEST(PropertyListResult, EscapesNeitherNamesNorValues) {
    PropertyListResult list;
    list.setName("a <b>");
    list.insert("n \"&", "<v>&\"");
    EXPECT_EQ(list.outputText(), "n \"&: <v>&\"\n");
    EXPECT_EQ(list.outputXml(), "<a_<b>>\n\t<n_\"&><v>&\"</n_\"&>\n</a_<b>>\n");
    EXPECT_EQ(list.outputJson(), "\t{\n\t\t\"n \"&\":\"<v>&'\"\n\t}");
    EXPECT_EQ(list.outputCSV(), "n \"&,<v>&\",");
    EXPECT_EQ(list.outputEsxXml(), std::string(ESX_HEAD) +
                                       "<list type=\"structure\">"
                                       "<structure typeName=\"KeyValue\">"
                                       "<field name=\"Attribute Name\">"
                                       "<string>n \"&</string></field>"
                                       "<field name=\"Value\"><string><v>&\"</string></field>"
                                       "</structure>"
                                       "</list></output>");
}

TEST(PropertyListResult, WritesEachKindOfValueInJson) {
    PropertyListResult list;
    list.insert("number", "1.5");
    list.insert("prefixed", "0x1F");
    list.insert("truth", "True");
    list.insert("none", "");
    list.insert("quoted", "a \"b\" c");
    EXPECT_EQ(list.outputJson(), "\t{\n"
                                 "\t\t\"number\":1.5,\n"
                                 "\t\t\"prefixed\":\"0x1F\",\n"
                                 "\t\t\"truth\":true,\n"
                                 "\t\t\"none\":\"\",\n"
                                 "\t\t\"quoted\":\"a 'b' c\"\n"
                                 "\t}");
}

TEST(PropertyListResult, ReadsTheFirstPropertyOfANameInAnyCase) {
    PropertyListResult list;
    list.insert("Other", "0");
    list.insert("Name", "1");
    list.insert("NAME", "2");
    EXPECT_EQ(list["NAME"], "1");
    EXPECT_EQ(list["name"], "1");
    EXPECT_EQ(list["Nam"], "");
    EXPECT_EQ(list.getCount(), 3U);
    EXPECT_TRUE(list.contains("nAme"));
    EXPECT_FALSE(list.contains("Names"));
}

TEST(PropertyListResult, LooksAtAValueAsItsCellPrintsIt) {
    auto nested = std::make_shared<PropertyListResult>();
    nested->insert("a", "1");
    auto typed = std::make_shared<SimpleResult>("5");
    typed->setOutputType(OutputType::csv);
    auto plain = std::make_shared<SimpleResult>("TRUE");
    PropertyListResult list;
    list.insert("nested", nested);
    list.insert("typed", typed);
    list.insert("plain", plain);
    EXPECT_EQ(list["typed"], "Result,5,\n");
    EXPECT_EQ(list.outputText(), "nested: a: 1\n\ntyped: Result,5,\n\nplain: TRUE\n");
    EXPECT_EQ(list.outputJson(), "\t{\n"
                                 "\t\t\"nested\":\"a: 1\n\",\n"
                                 "\t\t\"typed\":\"Result,5,\n\",\n"
                                 "\t\t\"plain\":true\n"
                                 "\t}");
}

TEST(PropertyListResult, SharesItsCellsWithItsCopies) {
    auto cell = std::make_shared<SimpleResult>("1");
    PropertyListResult list;
    list.setName("First");
    list.insert("a", cell);
    PropertyListResult copy = list;
    copy.setName("Second");
    copy.insert("b", "2");

    EXPECT_EQ(copy.propertiesBegin()->second, list.propertiesBegin()->second);
    cell->setOutputType(OutputType::csv);
    EXPECT_EQ(list.outputCSV(), "a,Result,1,\n,");
    EXPECT_EQ(copy.outputCSV(), "a,Result,1,\n,b,2,");
    EXPECT_EQ(list.getName(), "First");
    EXPECT_EQ(copy.getName(), "Second");
}

TEST(PropertyListResult, OutlivesTheListThatItWasCopiedFrom) {
    auto original = std::make_unique<PropertyListResult>(drive());
    const PropertyListResult copy = *original;
    original.reset();
    EXPECT_EQ(copy.outputCSV(), "Name (x),A1,Count,3,");
}

TEST(PropertyListResult, GivesReadAccessInInsertionOrder) {
    const PropertyListResult list = drive();
    ASSERT_EQ(list.propertiesEnd() - list.propertiesBegin(), 2);
    EXPECT_EQ(list.propertiesBegin()->first, "Name (x)");
    EXPECT_EQ((list.propertiesBegin() + 1)->second->output(), "3");
}

TEST(PropertyListResult, IsNamedRootAtFirst) {
    EXPECT_EQ(PropertyListResult().getName(), "Root");
}

TEST(PropertyListResult, FollowsItsOutputType) {
    PropertyListResult list = drive();
    list.setOutputType(OutputType::csv);
    EXPECT_EQ(list.output(), "Name (x),A1,Count,3,");
    list.setOutputType(OutputType::text);
    EXPECT_EQ(list.output(), "Name (x): A1\nCount: 3\n");
}

}  // namespace
