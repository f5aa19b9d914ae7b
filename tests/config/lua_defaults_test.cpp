#include <sstream>

#include "lua_fixture.h"

namespace {

using test::LuaTest;
using test::Widen;

// The values of a table: numbers, true, false, and texts in quotes.
const struct {
    const char* table;
    const char* values;
} kDefaults[] = {
    {"Biogeneric", "MinQuantityValue=0.30 MinQualityValue=0.50 MinArea=10000"},
    {"MinimalWallThickness",
     "SlopeLength=1 SlopeLengthInlay=1.5 SlopeLengthVeneer=1 SlopeAngle=60 SlopeAngleVeneer=75 AngleThreshold=20 "
     "SearchLengthMaxAngle=4 BioVeneerOffset=0.6 SlopeBorderSizeAngleMeasurement=4 TankOffset=40 TankOffsetForImplants=80"},
    {"RestorationGeneration", "Napa=true Bio=true"},
    {"RestorationParameters.EstimateNormals", "ExtensionAngleMolar=40 ExtensionAngleFront=30 ExtensionAngleContact=10"},
    {"RestorationParameters.Equator", "TargetV=1.4 PonticTargetV=1.4"},
    {"RestorationParameters.BioMesh", "PosteriorsVMin=1.2 InlaysVMin=1.2 PosteriorsPonticVMin=1.8"},
    {"RestorationParameters.InsertionAxis", "MaxAngleKeepLastSegmentation=0 bAllowSegmentationTransformation=false"},
    {"RestorationParameters",
     "allowSettlingInBiobypass=true noSettlingWithBridges=true VeneerFeatureLabelOffsetFromRestorationBorder=20"},
    {"KaFit", "Level=3 DistanceMaps.Resolution=0.00025 BoundingBox.zConstraint=0.005 PostStepCorrection.bActive=true"},
    {"KaFit.PostStepCorrectionCorrelation", "bActive=true PrepCorrelationDiff=50 SearchLength=50 SearchStepLength=2.5"},
    {"KaFit.InitialPlacement",
     "Antagonist.AnteriorCrown=false Antagonist.PosteriorCrown=true searchRadiusPrep=0.01 searchRadiusAntagonistAnt=0.0025 "
     "searchRadiusAntagonistPost=0.0045 maxHeight=0.02 minHeightAntagonistAbsent=0.005 lateralCrownOffset=0.002 "
     "useInlayToothBorder=true"},
    {"KaFit.RigidOptimization",
     "Antagonist.AnteriorCrown=false Antagonist.PosteriorCrown=true translate_max=0.01 rotate_max=45 scale_min=0.7 scale_max=1.5 "
     "step_translate=0.0001 step_rotate=1 step_scale=0.005 ToothPositions.t12=0.00025 ToothPositions.t34=0.002 "
     "ToothPositions.ca9=0.0008"},
    {"KaFit.RigidOptimization.Weights",
     "Contact=3 Minimalthickness=1 VeneerMinimalGeometry=3 VeneerPrepLine=2 Center=1 CenterDist=0.006 Symmetry.Rotate=0.5 "
     "Symmetry.Scale=4"},
    {"KaFit.RigidOptimization.Weights.Anterior", "x_wConnect=2 y_wConnect=2 z_wConnect=2 z_wConnect1121=4 CenterDist=0.003"},
    {"KaFit.RigidOptimization.Weights.Posterior", "x_wConnect=0 y_wConnect=1 z_wConnect=1 CenterDist=0.006"},
    {"KaFit.RigidOptimization.Weights.Pontic", "x_wConnect=3 y_wConnect=3 z_wConnect=5"},
    {"KaFit.CellOptimization",
     "count_iteration=10 distance_max=0.001 translate_max=0.01 translate_step=0.0005 factor_deform=0.5 scale_max=2 angle_max=30 "
     "doInlays=true doVeneers=false"},
    {"KaFit.Plausibility", "quality_threshold=0.5 distance_threshold=0.0008 cos_angle_threshold=45 z_height=0.01"},
    {"Test", "param1=0.25 param2=\"test1\" param3=1000 param4=true"},
    {"Test.param5", "param1=22 param2=1.5 param3=\"test2\" param4=false"},
};

class LuaDefaults : public LuaTest {
protected:
    void CheckNumber(const CString& path, const std::string& value) {
        EXPECT_EQ(lua_->GetConfigFloat(path), std::stof(value));
        EXPECT_EQ(lua_->GetConfigInt(path), static_cast<int>(std::stod(value)));
        EXPECT_EQ(std::stod(test::Narrow(lua_->GetConfigString(path))), std::stod(value));
        EXPECT_TRUE(Throws([&] { lua_->GetConfigBool(path); }));
    }
    void CheckBool(const CString& path, bool value) {
        EXPECT_EQ(lua_->GetConfigBool(path), value);
        EXPECT_TRUE(Throws([&] { lua_->GetConfigFloat(path); }) && Throws([&] { lua_->GetConfigInt(path); }));
        EXPECT_EQ(lua_->GetConfigString(path), CString());
    }
    void CheckText(const CString& path, const std::string& value) {
        EXPECT_EQ(test::Narrow(lua_->GetConfigString(path)), value);
        EXPECT_TRUE(Throws([&] { lua_->GetConfigFloat(path); }) && Throws([&] { lua_->GetConfigBool(path); }));
    }
    // How many values there were.
    int CheckAll() {
        int count = 0;
        for (const auto& [table, values] : kDefaults) {
            std::istringstream words(values);
            for (std::string word; words >> word; ++count) {
                const std::size_t equals = word.find('=');
                const std::string path = std::string(table) + "." + word.substr(0, equals), value = word.substr(equals + 1);
                SCOPED_TRACE(path);
                if (value.front() == '"')
                    CheckText(Widen(path).c_str(), value.substr(1, value.size() - 2));
                else if (value == "true" || value == "false")
                    CheckBool(Widen(path).c_str(), value == "true");
                else
                    CheckNumber(Widen(path).c_str(), value);
            }
        }
        return count;
    }
};

TEST_F(LuaDefaults, AreAllThereWithTheirTypesAndPutBackByASecondLoad) {
    EXPECT_TRUE(Throws([&] { lua_->GetConfigInt(_T("KaFit.Level")); }));
    EXPECT_TRUE(KaCLuaConfig::Load());
    const int count = CheckAll();
    ASSERT_TRUE(
        Run("count = 0 local function add(t) for _, v in pairs(t) do "
            "if type(v) == 'table' then add(v) else count = count + 1 end end end add(Biogeneric) "
            "add(MinimalWallThickness) add(RestorationGeneration) add(RestorationParameters) add(KaFit) add(Test)"));
    EXPECT_EQ(lua_->GetIntGlobal(_T("count")), count);  // and no others

    ASSERT_TRUE(Run("KaFit.Level = 'x' Test = nil Biogeneric = 7"));
    EXPECT_TRUE(Throws([&] { lua_->GetConfigInt(_T("KaFit.Level")); }));
    EXPECT_TRUE(KaCLuaConfig::Load());
    EXPECT_EQ(CheckAll(), count);
    for (const LPCTSTR table : {_T("KaFit"), _T("KaFit.InitialPlacement"), _T("Test.param5")})
        EXPECT_TRUE(Throws([&] { lua_->GetConfigFloat(table); })) << test::Narrow(CString(table));
}

TEST_F(LuaDefaults, AreTriedByTheSelfTest) {
    const KaCLuaConfig config, copy = config;
    EXPECT_TRUE(copy.Test());
    EXPECT_TRUE(Run("setmetatable(_G, { __newindex = function(t, k, v) rawset(t, k, k == 'Test' and {} or v) end }) Test = nil"));
    EXPECT_FALSE(KaCLuaConfig::Test());  // throws inside: its values are missing
    EXPECT_TRUE(KaCLuaConfig::Load());
}

}  // namespace
