// One named object with properties and children, in every format.
#include "interfaces/cli/cliframework/ObjectResult.h"

#include "interfaces/cli/cliframework/SimpleResult.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>

namespace {

using namespace cli::framework;

/// The object "Drive 0" with two properties and a child of one property.
std::unique_ptr<ObjectResult> drive() {
    auto firmware = std::make_unique<ObjectResult>();
    firmware->insert("State", "true");
    auto drive = std::make_unique<ObjectResult>("Drive 0");
    drive->insert("Name (short)", "A1");
    drive->insert("Size", "100");
    drive->insert("Firmware", std::move(firmware));
    return drive;
}

/// An object named "Top" that holds two children without content.
std::unique_ptr<ObjectResult> parentOfEmptyChildren() {
    auto top = std::make_unique<ObjectResult>("Top");
    top->insert("First", std::make_unique<ObjectResult>());
    top->insert("Second one", std::make_unique<ObjectResult>());
    return top;
}

/// Renders in words of its own in every format.
class OverridingObject : public ObjectResult {
public:
    std::string outputText() const override { return "own text\n"; }

    std::string outputXml() const override { return "<own/>\n"; }

    std::string outputJson() const override { return "{\"own\":1}"; }

    std::string outputCSV() const override { return "own,"; }
};

/// Derives without changing any operation.
class PlainDerivedObject : public ObjectResult {};

TEST(ObjectResult, RendersTheDriveAsText) {
    EXPECT_EQ(drive()->outputText(), "\n"
                                     "- Drive 0 -\n"
                                     "\n"
                                     "Name (short) : A1\n"
                                     "Size : 100\n"
                                     "\n"
                                     "- Firmware -\n"
                                     "\n"
                                     "State : true\n");
}

TEST(ObjectResult, RendersTheDriveAsXml) {
    EXPECT_EQ(drive()->outputXml(), "<Drive_0>\n"
                                    "\t<Name_short>A1</Name_short>\n"
                                    "\t<Size>100</Size>\n"
                                    "\n"
                                    "\t<Firmware>\n"
                                    "\t\t<State>true</State>\n"
                                    "\t</Firmware>\n"
                                    "</Drive_0>\n");
}

TEST(ObjectResult, RendersTheDriveAsJson) {
    EXPECT_EQ(drive()->outputJson(), "{\n"
                                     "\t\"Name (short)\":\"A1\",\n"
                                     "\t\"Size\":100,\n"
                                     "\t\"Firmware\":\n"
                                     "\t{\n"
                                     "\t\t\"State\":true\n"
                                     "\t}\n"
                                     "}");
}

TEST(ObjectResult, RendersTheDriveAsCsv) {
    EXPECT_EQ(drive()->outputCSV(), "Name (short),A1,Size,100,Firmware,\n"
                                    "State,true,,\n");
}

TEST(ObjectResult, HasNoEsxForm) {
    EXPECT_EQ(drive()->outputEsxXml(), "");
    EXPECT_EQ(ObjectResult().outputEsxXml(), "");
}

TEST(ObjectResult, RendersItsTableAsText) {
    EXPECT_EQ(drive()->outputTextTable(), "\n"
                                          "- Drive 0 -\n"
                                          "\n"
                                          "Name (short) : A1\n"
                                          "Size : 100\n"
                                          "\n"
                                          "- Firmware -\n"
                                          "\n"
                                          "State : true\n");
}

TEST(ObjectResult, RendersNothingInEveryFormat) {
    const ObjectResult empty;
    EXPECT_EQ(empty.outputText(), "\nNo results\n");
    EXPECT_EQ(empty.outputTextTable(), "\nNo results\n");
    EXPECT_EQ(empty.outputXml(), "<>\n</>\n");
    EXPECT_EQ(empty.outputJson(), "{\n}");
    EXPECT_EQ(empty.outputCSV(), "");
}

TEST(ObjectResult, RendersAHeadingAboveNothing) {
    const ObjectResult empty("X");
    EXPECT_EQ(empty.outputText(), "\n- X -\n\nNo results\n");
    EXPECT_EQ(empty.outputXml(), "<X>\n</X>\n");
    EXPECT_EQ(empty.outputJson(), "{\n}");
    EXPECT_EQ(empty.outputCSV(), "");
}

TEST(ObjectResult, RendersChildrenWithoutProperties) {
    const auto top = parentOfEmptyChildren();
    EXPECT_EQ(top->outputText(), "\n"
                                 "- Top -\n"
                                 "\n"
                                 "- First -\n"
                                 "\n"
                                 "No results\n"
                                 "\n"
                                 "- Second one -\n"
                                 "\n"
                                 "No results\n");
    EXPECT_EQ(top->outputXml(), "<Top>\n"
                                "\t<First>\n"
                                "\t</First>\n"
                                "\t<Second_one>\n"
                                "\t</Second_one>\n"
                                "</Top>\n");
    EXPECT_EQ(top->outputJson(), "{\n"
                                 "\t\"First\":\n"
                                 "\t{\n"
                                 "\t},\n"
                                 "\t\"Second one\":\n"
                                 "\t{\n"
                                 "\t}\n"
                                 "}");
    EXPECT_EQ(top->outputCSV(), "First,\n"
                                ",\n"
                                "Second one,\n"
                                ",\n");
}

TEST(ObjectResult, IndentsEachLevelByOneTab) {
    auto leaf = std::make_unique<ObjectResult>();
    leaf->insert("c", "3");
    auto middle = std::make_unique<ObjectResult>();
    middle->insert("b", "2");
    middle->insert("Leaf", std::move(leaf));
    middle->insert("Other", std::make_unique<ObjectResult>());
    ObjectResult top("Top");
    top.insert("a", "1");
    top.insert("Middle", std::move(middle));

    EXPECT_EQ(top.outputText(), "\n- Top -\n"
                                "\na : 1\n"
                                "\n- Middle -\n"
                                "\nb : 2\n"
                                "\n- Leaf -\n"
                                "\nc : 3\n"
                                "\n- Other -\n"
                                "\nNo results\n");
    EXPECT_EQ(top.outputXml(), "<Top>\n"
                               "\t<a>1</a>\n"
                               "\n"
                               "\t<Middle>\n"
                               "\t\t<b>2</b>\n"
                               "\n"
                               "\t\t<Leaf>\n"
                               "\t\t\t<c>3</c>\n"
                               "\t\t</Leaf>\n"
                               "\t\t<Other>\n"
                               "\t\t</Other>\n"
                               "\t</Middle>\n"
                               "</Top>\n");
    EXPECT_EQ(top.outputJson(), "{\n"
                                "\t\"a\":1,\n"
                                "\t\"Middle\":\n"
                                "\t{\n"
                                "\t\t\"b\":2,\n"
                                "\t\t\"Leaf\":\n"
                                "\t\t{\n"
                                "\t\t\t\"c\":3\n"
                                "\t\t},\n"
                                "\t\t\"Other\":\n"
                                "\t\t{\n"
                                "\t\t}\n"
                                "\t}\n"
                                "}");
    EXPECT_EQ(top.outputCSV(), "a,1,Middle,\n"
                               "b,2,Leaf,\n"
                               "c,3,,\n"
                               "Other,\n"
                               ",\n"
                               ",\n");
}

TEST(ObjectResult, RenamesAChildAfterItsKey) {
    ObjectResult top;
    top.insert("Bus", std::make_unique<ObjectResult>("Former name"));
    ASSERT_EQ(top.getCount(), 1U);
    EXPECT_EQ((*top.childrenBegin())->getRoot(), "Bus");
    EXPECT_EQ(top.outputXml(), "<>\n\t<Bus>\n\t</Bus>\n</>\n");
}

TEST(ObjectResult, TakesBracketsOutOfPropertyTagsOnly) {
    auto child = std::make_unique<ObjectResult>();
    ObjectResult object("Drive (1)");
    object.insert("Temperature (C)", "30");
    object.insert("Sub (x)", std::move(child));
    EXPECT_EQ(object.outputText(),
              "\n- Drive (1) -\n\nTemperature (C) : 30\n\n- Sub (x) -\n\nNo results\n");
    EXPECT_EQ(object.outputXml(), "<Drive_(1)>\n"
                                  "\t<Temperature_C>30</Temperature_C>\n"
                                  "\n"
                                  "\t<Sub_(x)>\n"
                                  "\t</Sub_(x)>\n"
                                  "</Drive_(1)>\n");
    EXPECT_EQ(object.outputJson(), "{\n"
                                   "\t\"Temperature (C)\":30,\n"
                                   "\t\"Sub (x)\":\n"
                                   "\t{\n"
                                   "\t}\n"
                                   "}");
    EXPECT_EQ(object.outputCSV(), "Temperature (C),30,Sub (x),\n,\n");
}

TEST(ObjectResult, KeepsPropertiesOfOneNameInOrder) {
    ObjectResult object;
    object.insert("b", "1");
    object.insert("a", "2");
    object.insert("b", "3");
    EXPECT_EQ(object.outputText(), "\nb : 1\na : 2\nb : 3\n");
    EXPECT_EQ(object.outputXml(), "<>\n\t<b>1</b>\n\t<a>2</a>\n\t<b>3</b>\n</>\n");
    EXPECT_EQ(object.outputJson(), "{\n\t\"b\":1,\n\t\"a\":2,\n\t\"b\":3\n}");
    EXPECT_EQ(object.outputCSV(), "b,1,a,2,b,3,");
}

TEST(ObjectResult, KeepsChildrenOfOneNameInOrder) {
    ObjectResult object;
    for (const char* value : {"2", "1"}) {
        auto child = std::make_unique<ObjectResult>();
        child->insert("a", value);
        object.insert("Sub", std::move(child));
    }
    EXPECT_EQ(object.outputCSV(), "Sub,\na,2,,\nSub,\na,1,,\n");
}

TEST(ObjectResult, PutsACommaBehindTheLastPropertyOnlyIfChildrenFollow) {
    ObjectResult object;
    object.insert("a", "x");
    EXPECT_EQ(object.outputJson(), "{\n\t\"a\":\"x\"\n}");
    object.insert("Sub", std::make_unique<ObjectResult>());
    EXPECT_EQ(object.outputJson(), "{\n\t\"a\":\"x\",\n\t\"Sub\":\n\t{\n\t}\n}");
}

TEST(ObjectResult, WritesEachKindOfValueInJson) {
    ObjectResult object;
    object.insert("number", "-5");
    object.insert("padded", "0123");
    object.insert("truth", "FALSE");
    object.insert("none", "");
    object.insert("quoted", "a \"b\" c");
    object.insert("raw", "a\\\n\tb");
    EXPECT_EQ(object.outputJson(), "{\n"
                                   "\t\"number\":-5,\n"
                                   "\t\"padded\":\"0123\",\n"
                                   "\t\"truth\":false,\n"
                                   "\t\"none\":\"\",\n"
                                   "\t\"quoted\":\"a 'b' c\",\n"
                                   "\t\"raw\":\"a\\\n\tb\"\n"
                                   "}");
}

TEST(ObjectResult, EscapesNeitherNamesNorValues) {
    ObjectResult object("a<b>");
    object.insert("n\"&", "<v>&\"");
    object.insert("c\"&", std::make_unique<ObjectResult>());
    EXPECT_EQ(object.outputText(), "\n- a<b> -\n\nn\"& : <v>&\"\n\n- c\"& -\n\nNo results\n");
    EXPECT_EQ(object.outputXml(), "<a<b>>\n"
                                  "\t<n\"&><v>&\"</n\"&>\n"
                                  "\n"
                                  "\t<c\"&>\n"
                                  "\t</c\"&>\n"
                                  "</a<b>>\n");
    EXPECT_EQ(object.outputJson(), "{\n\t\"n\"&\":\"<v>&'\",\n\t\"c\"&\":\n\t{\n\t}\n}");
    EXPECT_EQ(object.outputCSV(), "n\"&,<v>&\",c\"&,\n,\n");
}

TEST(ObjectResult, KeepsNulBytesAndBytesAboveSevenBits) {
    ObjectResult object;
    object.insert("a", std::string("x\0\xff", 3));
    EXPECT_EQ(object.outputText(), std::string("\na : x\0\xff\n", 9));
}

TEST(ObjectResult, FindsAPropertyInAnyCaseAndNoChild) {
    ObjectResult object;
    object.insert("Name", "x");
    object.insert("Child", std::make_unique<ObjectResult>());
    EXPECT_TRUE(object.contains("name"));
    EXPECT_TRUE(object.contains("NAME"));
    EXPECT_FALSE(object.contains("Nam"));
    EXPECT_FALSE(object.contains("Child"));
    EXPECT_FALSE(object.contains(""));
}

TEST(ObjectResult, CountsChildrenAndNotProperties) {
    ObjectResult object;
    object.insert("a", "1");
    object.insert("b", "2");
    EXPECT_EQ(object.getCount(), 0U);
    object.insert("Sub", std::make_unique<ObjectResult>());
    EXPECT_EQ(object.getCount(), 1U);
}

TEST(ObjectResult, GivesReadAccessInInsertionOrder) {
    const auto object = drive();
    ASSERT_EQ(object->propertiesEnd() - object->propertiesBegin(), 2);
    EXPECT_EQ(object->propertiesBegin()->first, "Name (short)");
    EXPECT_EQ(object->propertiesBegin()->second->output(), "A1");
    EXPECT_EQ((object->propertiesBegin() + 1)->first, "Size");
    ASSERT_EQ(object->childrenEnd() - object->childrenBegin(), 1);
    EXPECT_EQ((*object->childrenBegin())->getRoot(), "Firmware");
}

TEST(ObjectResult, StartsWithoutAName) {
    ObjectResult object;
    EXPECT_EQ(object.getRoot(), "");
    object.setRoot("Object");
    EXPECT_EQ(object.getRoot(), "Object");
    EXPECT_EQ(ObjectResult("X").getRoot(), "X");
}

TEST(ObjectResult, FollowsItsOutputType) {
    const auto object = drive();
    EXPECT_EQ(object->getOutputType(), OutputType::text);
    EXPECT_EQ(object->output().substr(0, 14), "\n- Drive 0 -\n\n");
    object->setOutputType(OutputType::nvmxml);
    EXPECT_EQ(object->output().substr(0, 10), "<Drive_0>\n");
    object->setOutputType(OutputType::json);
    EXPECT_EQ(object->output().substr(0, 4), "{\n\t\"");
    object->setOutputType(OutputType::csv);
    EXPECT_EQ(object->output().substr(0, 13), "Name (short),");
    object->setOutputType(OutputType::esx);
    EXPECT_EQ(object->output(), "");
}

TEST(ObjectResult, PrintsEachCellByTheCellsOwnOutputType) {
    auto cell = std::make_unique<SimpleResult>("5");
    cell->setOutputType(OutputType::json);
    ObjectResult object;
    object.insert("plain", "6");
    object.insert("own", std::move(cell));
    EXPECT_EQ(object.outputText(), "\nplain : 6\nown : {\n\t\"Result\":\"5\"\n}\n");
    // The value is looked at as it prints, so it is no number any more.
    EXPECT_EQ(object.outputJson(), "{\n\t\"plain\":6,\n\t\"own\":\"{\n\t'Result':'5'\n}\"\n}");
}

TEST(ObjectResult, TakesAnObjectAsTheCellOfAProperty) {
    auto cell = std::make_unique<ObjectResult>();
    cell->insert("b", "2");
    ObjectResult object;
    object.insert("a", std::unique_ptr<ResultBase>(std::move(cell)));
    EXPECT_EQ(object.getCount(), 0U);
    EXPECT_EQ(object.outputText(), "\na : \nb : 2\n\n");
}

TEST(ObjectResult, UsesTheOperationsOfADerivedChild) {
    ObjectResult object;
    object.insert("Own", std::unique_ptr<ObjectResult>(std::make_unique<OverridingObject>()));
    object.insert("Plain", std::unique_ptr<ObjectResult>(std::make_unique<PlainDerivedObject>()));
    EXPECT_EQ(object.outputText(), "own text\n\n- Plain -\n\nNo results\n");
    EXPECT_EQ(object.outputXml(), "<>\n<own/>\n\t<Plain>\n\t</Plain>\n</>\n");
    EXPECT_EQ(object.outputJson(), "{\n"
                                   "\t\"Own\":\n"
                                   "{\"own\":1},\n"
                                   "\t\"Plain\":\n"
                                   "\t{\n"
                                   "\t}\n"
                                   "}");
    EXPECT_EQ(object.outputCSV(), "Own,\nown,,\nPlain,\n,\n");
}

TEST(ObjectResult, StartsAtTheClassWideIndentationAndRestoresIt) {
    EXPECT_EQ(ObjectResult::tab, "");
    const auto object = drive();
    object->outputXml();
    EXPECT_EQ(ObjectResult::tab, "");
    object->outputJson();
    EXPECT_EQ(ObjectResult::tab, "");

    ObjectResult::tab = "\t ";
    const std::string xml = object->outputXml();
    const std::string json = object->outputJson();
    EXPECT_EQ(ObjectResult::tab, "\t ");
    ObjectResult::tab.clear();
    EXPECT_EQ(xml, "\t <Drive_0>\n"
                   "\t \t<Name_short>A1</Name_short>\n"
                   "\t \t<Size>100</Size>\n"
                   "\n"
                   "\t \t<Firmware>\n"
                   "\t \t\t<State>true</State>\n"
                   "\t \t</Firmware>\n"
                   "\t </Drive_0>\n");
    EXPECT_EQ(json, "\t {\n"
                    "\t\t \"Name (short)\":\"A1\",\n"
                    "\t\t \"Size\":100,\n"
                    "\t \t\"Firmware\":\n"
                    "\t \t{\n"
                    "\t\t \t\"State\":true\n"
                    "\t \t}\n"
                    "\t }");
}

TEST(ObjectResult, WritesAListOfPropertiesGivenApart) {
    ObjectResult object;
    ObjectResult::Properties list;
    list.emplace_back("a", std::make_unique<SimpleResult>("1"));
    list.emplace_back("b", std::make_unique<SimpleResult>("x"));
    std::string text = "before\n";
    object.OutputPropertyJson(list, "--", text);
    EXPECT_EQ(text, "before\n\t--\"a\":1,\n\t--\"b\":\"x\"\n");

    object.insert("Sub", std::make_unique<ObjectResult>());
    text.clear();
    object.OutputPropertyJson(list, "", text);
    EXPECT_EQ(text, "\t\"a\":1,\n\t\"b\":\"x\",\n");
}

/// A chain of `depth` objects below an unnamed one, with one property at the bottom.
std::unique_ptr<ObjectResult> chain(std::size_t depth, const std::string& value) {
    auto object = std::make_unique<ObjectResult>();
    object->insert("v", value);
    for (std::size_t level = 0; level < depth; ++level) {
        auto parent = std::make_unique<ObjectResult>();
        parent->insert("c", std::move(object));
        object = std::move(parent);
    }
    return object;
}

TEST(ObjectResult, RendersAChainTwoThousandDeepWithMegabytesAtTheBottom) {
    constexpr std::size_t DEPTH = 2000;
    const std::string value(4 << 20, 'x');
    const auto object = chain(DEPTH, value);

    std::string text;
    std::string xml = "<>\n";
    std::string json = "{\n";
    std::string csv;
    for (std::size_t level = 1; level <= DEPTH; ++level) {
        const std::string tab(level, '\t');
        text += "\n- c -\n";
        xml += tab + "<c>\n";
        json += tab + "\"c\":\n" + tab + "{\n";
        csv += "c,\n";
    }
    const std::string tab(DEPTH, '\t');
    text += "\nv : " + value + "\n";
    xml += tab + "\t<v>" + value + "</v>\n";
    json += tab + "\t\"v\":\"" + value + "\"\n";
    csv += "v," + value + ",";
    for (std::size_t level = DEPTH; level >= 1; --level) {
        const std::string closing(level, '\t');
        xml += closing + "</c>\n";
        json += closing + "}\n";
        csv += ",\n";
    }
    xml += "</>\n";
    json += "}";

    EXPECT_TRUE(object->outputText() == text);
    EXPECT_TRUE(object->outputXml() == xml);
    EXPECT_TRUE(object->outputJson() == json);
    EXPECT_TRUE(object->outputCSV() == csv);
    EXPECT_EQ(ObjectResult::tab, "");
}

TEST(ObjectResult, RendersTwentyThousandChildren) {
    constexpr int COUNT = 20000;
    ObjectResult object("All");
    std::string text = "\n- All -\n";
    std::string xml = "<All>\n";
    std::string json = "{\n";
    std::string csv;
    for (int number = 0; number < COUNT; ++number) {
        const std::string digits = std::to_string(number);
        auto child = std::make_unique<ObjectResult>();
        child->insert("Number (n)", digits);
        object.insert("Drive " + digits, std::move(child));

        text += "\n- Drive " + digits + " -\n\nNumber (n) : " + digits + "\n";
        xml += "\t<Drive_" + digits + ">\n\t\t<Number_n>" + digits + "</Number_n>\n\t</Drive_" +
               digits + ">\n";
        json += "\t\"Drive " + digits + "\":\n\t{\n\t\t\"Number (n)\":" + digits + "\n\t}" +
                (number + 1 < COUNT ? ",\n" : "\n");
        csv += "Drive " + digits + ",\nNumber (n)," + digits + ",,\n";
    }
    xml += "</All>\n";
    json += "}";

    EXPECT_EQ(object.getCount(), 20000U);
    EXPECT_TRUE(object.outputText() == text);
    EXPECT_TRUE(object.outputXml() == xml);
    EXPECT_TRUE(object.outputJson() == json);
    EXPECT_TRUE(object.outputCSV() == csv);
}

}  // namespace
