#pragma once

/// \file
/// The published vocabulary of JSON keys.

namespace qel::Sectrix {

// The keys in the order of their declaration, each written once: KEY(stem) for a key that reads like its stem,
// KEY_AS(stem, value) for one that does not.
/// \cond
// clang-format off
#define SECTRIX_JSON_KEYS(KEY, KEY_AS) \
    KEY(Attributes) KEY(Identity) KEY(Offset) KEY(LeftOverhang) KEY(RightOverhang) KEY(Skew) KEY(Bearings) \
    KEY(BridgeStart) KEY(StaticParameters) KEY(DataIdentityParameters) KEY(Tag) KEY(UserData) KEY(Tooltip) \
    KEY(Link) KEY(Description) KEY(Name) KEY_AS(CSCoordName, "name") KEY_AS(CSCoordinates, "coordinates") \
    KEY_AS(CSAssemblyPartName, "assemblyPartName") KEY_AS(CSLoops, "loops") KEY(Value) KEY(IsStation) \
    KEY(Hidden) KEY(Type) KEY(Priority) KEY(CategoryName) KEY(CategoryLabel) KEY(Label) KEY(CreationDate) \
    KEY(TerminationDate) KEY(VolumeCIP) KEY(VolumePrecast) KEY(VolumeStructuralSteel) \
    KEY(VolumeReinforcingSteel) KEY(Volume) KEY(PartFamilyGUID) KEY(PartSizeGUID) KEY(PartSizeName) \
    KEY(CacheName) KEY(Parameters) KEY(Path) KEY(Transform) KEY(StartExtendPoints) KEY(EndExtendPoints) \
    KEY(SubType) KEY(Extrusions) KEY(EndPlanes) KEY(Abutments) KEY(Deck) KEY(Foundations) \
    KEY(GirderGroups) KEY(Piers) KEY(GenericCityFeatures) KEY(PartSizeDefinitions) KEY(PartFamilies) \
    KEY(Sections) KEY(Exterior) KEY(Profiles) KEY(Points) KEY(Key) KEY(Guid) KEY(GUID) KEY(Fid) KEY(Cid) \
    KEY(SegId) KEY(Length) KEY(ConcreteStrength) KEY(SuperimposedDeadload) KEY(WearingSurfaceThickness) \
    KEY(LeftEdgeToCurb) KEY(RightEdgeToCurb) KEY(CrossSections) KEY(LongitudinalOffsetFromPier) \
    KEY(LateralOffsetFromPier) KEY(HeightAboveGround) KEY(ElevationOffset) KEY(LateralOffset) \
    KEY(StationOffset) KEY(SkewX) KEY(SkewY) KEY(SkewZ) KEY(Girders) KEY(EndLateralOffsetFromCenterline) \
    KEY(StartLateralOffsetFromCenterline) KEY(Strength) KEY(TransferStrength) KEY(TendonStrength) \
    KEY(InitialPrestress) KEY(TendonProofStrength) KEY(InitialPrestressK7) KEY(InitialPrestressK8) \
    KEY(BackBearings) KEY(MidBearings) KEY(FrontBearings) KEY(UnitScale) KEY(StartPoint) KEY(EndPoint) \
    KEY(MinTerrainElevation) KEY(MaxTerrainElevation) KEY(General) KEY(Start) KEY(Origin) KEY(Normal) \
    KEY(TunnelSegments) KEY(StartOffset) KEY(EndOffset) KEY(Slices) KEY(ReadOnly) KEY(Offsets) \
    KEY(MassProps) KEY(PartInfos) KEY(Area) KEY_AS(BBox, "bbox") KEY(VolumeType) KEY(Params) KEY(Segments) \
    KEY(Dimensions) KEY(StartWidth) KEY(EndWidth) KEY(Continuity) KEY(Tilting) KEY(Number) KEY(Spacing) \
    KEY(Azimuth) KEY(DiaphragmWidth) KEY(DeckContinuity) KEY(PierHeight) KEY(RefPoints) KEY(Outlines) \
    KEY_AS(OutlinesLC, "outlines") KEY(ClassId) KEY(FeatureIds) KEY(Status) KEY(MvqFile) KEY(ProjectFile) \
    KEY(TemplateFile) KEY(Severity) KEY(Body) KEY(Stage) KEY(Count) KEY(Total) KEY(KeySections) \
    KEY(Station) KEY(Decorations) KEY(TopElevation) KEY(BottomElevation) KEY(NumberOfGirders) \
    KEY(NominalLength) KEY(StartStation) KEY(EndStation) KEY(StartGap) KEY(EndGap) \
    KEY(StartLateralSpacing) KEY(EndLateralSpacing) KEY(GirdersInPlan) KEY(DesignStandard) \
    KEY(NumberOfPiers) KEY(PartType) KEY(HasHaunches) KEY(HaunchHeight) KEY(SpanNumber) \
    KEY(PointOnAlignment) KEY(StartDistanceAlongAlignment) KEY(EndDistanceAlongAlignment) \
    KEY(DeckOffsetDistance) KEY(DeckOffsetFromType) KEY(HorizontalOffset) KEY(VerticalOffset) KEY(Portals)

// clang-format on
/// \endcond

/// The keys of the JSON documents of bridges, tunnels, their parts and their parameters, as constants.
///
/// Each key stands in a narrow form for documents, `kPathTag`, and in a wide form for the host's own wide strings,
/// `kPathWTag`; both spell the same characters. Keys are case-sensitive, and near neighbours differ: `kGuidTag`
/// "Guid" is not `kGUIDTag` "GUID", and `kNameTag` "Name" is not `kCSCoordNameTag` "name".
class JsonTag {
public:
/// \cond
#define SECTRIX_DECLARE_KEY_AS(stem, value)                                                                        \
    static constexpr char const* k##stem##Tag = value;                                                             \
    static constexpr wchar_t const* k##stem##WTag = L"" value;
#define SECTRIX_DECLARE_KEY(stem) SECTRIX_DECLARE_KEY_AS(stem, #stem)
    SECTRIX_JSON_KEYS(SECTRIX_DECLARE_KEY, SECTRIX_DECLARE_KEY_AS)
#undef SECTRIX_DECLARE_KEY
#undef SECTRIX_DECLARE_KEY_AS
#undef SECTRIX_JSON_KEYS
    /// \endcond
};

} // namespace qel::Sectrix
