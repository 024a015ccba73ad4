#pragma once

// Error codes of effects and effect factories, and the exception that carries one.
// Used by hosts and plug-ins. The same number means another error in the other two enumerations.

#include <cstdint>

// Every code with its name: the one table behind the enumeration and ErrorName. The names are the
// texts that logs carry, so their spelling is kept letter for letter, odd ones included.
// clang-format off
#define TARNEX_FX_ERRORS(X) \
    X(0, eSuccess) \
    X(1, eNotValid) \
    X(2, eNotImplemented) \
    X(3, eInvalidParams) \
    X(4, eDeviceNotSet) \
    X(5, eDeviceIsInCaptureMode) \
    X(6, eSkipRenderFrame) \
    X(7, eNoFiltersConnected) \
    X(8, eInvalidFxFactoryObject) \
    X(9, eWrongFXIdx) \
    X(10, eGenericException) \
    X(11, eGenericError) \
    X(12, eCouldNotCreateFX) \
    X(13, eCantCloneFX) \
    X(14, eEmptyConfig) \
    X(15, eUnsupportedFileType) \
    X(16, eUnknownFileType) \
    X(17, eUnexpectedNode) \
    X(18, eCorruptedFile) \
    X(19, eCorruptedNode) \
    X(20, eEmptyFile) \
    X(21, eFailedToOpenFile) \
    X(22, eFilterNotFound) \
    X(23, eNewerVersionOfFile) \
    X(24, eNewerVersionOfNode) \
    X(25, eUnsupportedVersion) \
    X(26, eUnsupportedParametersVersion) \
    X(27, eCorruptedSourcesNodeVersion) \
    X(28, eUnsupportedFileEncoding) \
    X(29, eIncorrectFileType) \
    X(30, eWrongFileFormat) \
    X(31, eProtectedFile) \
    X(32, eNoWriteAccess) \
    X(33, eNoEnoughSpace) \
    X(34, eEmptyEffect) \
    X(35, eEmptyScene) \
    X(36, eSaveSceneTimeout) \
    X(37, eSameIndex) \
    X(38, eSameMode) \
    X(39, eNoHistory) \
    X(40, eNoWatermarkResource) \
    X(41, eNodeNotFound) \
    X(42, eFailedToSaveDocument) \
    X(43, eFailedToSaveNode) \
    X(44, eFailedToSaveMaterial) \
    X(45, eFailedToRemoveNode) \
    X(46, eFailedToReplaceNode) \
    X(47, eOptimizationFailed) \
    X(48, eOptimizationTimeout) \
    X(49, eTimeout) \
    X(50, eItemNotFound) \
    X(51, eInvalidEditMode) \
    X(52, eCantLockTexture) \
    X(53, eWrongEngine3DPointer) \
    X(54, eCouldNotCreateRenderElem) \
    X(55, eWrongDirect3DPointer) \
    X(56, eCantCreateVertexBuffer) \
    X(57, eWrongLocalVertexBufferPointer) \
    X(58, eCantGetLockDesc) \
    X(59, eWrongRendererPointer) \
    X(60, eWrongFilesManagerPointer) \
    X(61, eWrongSurfaceAllocatorPointer) \
    X(62, eFileNotFound) \
    X(63, eOBJNotFound) \
    X(64, eFileFormatNotSupported) \
    X(65, eFileOpenError) \
    X(66, eWrongFilePointer) \
    X(67, eCantGetNoFileStreams) \
    X(68, eCantGetFileStreamInfo) \
    X(69, eFileHasNotVideoStream) \
    X(70, eCantGetFileStream) \
    X(71, eCantSupportSelectedTextureFormat) \
    X(72, eCantCreateSurface) \
    X(73, eWrongTexturePointer) \
    X(74, eCantCreateCachedReader) \
    X(75, eWrongTextGeneratorPointer) \
    X(76, eCantGenerate3DObject) \
    X(77, eCantCreateIndexBuffer) \
    X(78, eSurfaceTooBig) \
    X(79, eCantCreateZBuffer) \
    X(80, eCantAddAttachedSurface) \
    X(81, eWrongSurfaceBPP) \
    X(82, eWrongSurfaceFormat) \
    X(83, eWrongExternalSurfaceMemoryLocation) \
    X(84, eCantCreatePixelFormat) \
    X(85, eCantSetExternalCreateSurfaceDesc) \
    X(86, eNotSupportedFormat) \
    X(87, eWrongDirect3DDevicePointer) \
    X(88, eCantSetTransformMatrix) \
    X(89, eCantSetTexture) \
    X(90, eCantSetTextureStageState) \
    X(91, eCantSetRenderState) \
    X(92, eCantCreateStateObject) \
    X(93, eCantSetRasterizerState) \
    X(94, eErrD3DXInitialize) \
    X(95, eCantSetTextureStates) \
    X(96, eWrongRTPointer) \
    X(97, eCantGetCurrentRT) \
    X(98, eCantGetCurrentViewPort) \
    X(99, eCantSetRT) \
    X(100, eCantClear) \
    X(101, eCantSetMaterial) \
    X(102, eMaterialIndexOutOfRange) \
    X(103, eCantSetLight) \
    X(104, eCantEnableLight) \
    X(105, eToManyLights) \
    X(106, eCantDisableLight) \
    X(107, eCantFindLightToRemove) \
    X(108, eTransformMatrixLevelOutOfRange) \
    X(109, eCantSetTransformation) \
    X(110, eWrongVertexBufferPointer) \
    X(111, eCantDrawVertexBuffer) \
    X(112, eWrongIndexBufferPointer) \
    X(113, eCantSetViewPort) \
    X(114, eCantDrawIndexedVertexBuffer) \
    X(115, eWrongDirectDrawPointer) \
    X(116, eWrongRenderStateManagerPointer) \
    X(117, eWrongText3DInitialization) \
    X(118, eWrongSurfaceHolderPointer) \
    X(119, eFileIsNotBitmap) \
    X(120, eNotPow2CompressedDDSBitmaps) \
    X(121, eCantGetDataFromFile) \
    X(122, eWrongBufferFormat) \
    X(123, eWrongIndexBufferSize) \
    X(124, eWrongText3DPointer) \
    X(125, eCantCreateMovieTexture) \
    X(126, eWrongBumpMapFormat) \
    X(127, eCantCreateSolidBrush) \
    X(128, eCantGetDC) \
    X(129, eCantFillRect) \
    X(130, eWrongRenderElemsDesc) \
    X(131, eCantGetFXDesc) \
    X(132, eCantEndScene) \
    X(133, eCantBeginScene) \
    X(134, eCantConnectStreamToMixer) \
    X(135, eWrongStreamPointer) \
    X(136, eCantGetCurrentBufferFromStream) \
    X(137, eCantGetCropInformation) \
    X(138, eNoFreeRenderTargets) \
    X(139, eCantRestoreRenderTarget) \
    X(140, eCantCreateRenderTarget) \
    X(141, eCantRestoreViewPort) \
    X(142, eWrongNumberOfPreparedTextures) \
    X(143, eWrongFXPointer) \
    X(144, eNotEnoughtSourceStreams) \
    X(145, eCantResetTexturesParams) \
    X(146, eWrongElemInDesc) \
    X(147, eRTIndexIDOutOfRange) \
    X(148, eWrongFXCallerPointer) \
    X(149, eCantCreateUniHwDriver) \
    X(150, eErrDirectInitialize) \
    X(151, eErrDirectUnsupported) \
    X(152, eNoInExtendedMode) \
    X(153, eCantStartRenderer) \
    X(154, eEngineLockedByOtherProcess) \
    X(155, eWrongSurfacePointer) \
    X(156, eWrongCropSize) \
    X(157, eErrInExtendedMode) \
    X(158, eErrDisplayInitialization) \
    X(159, eBltFastError) \
    X(160, eCantStartVPCapture) \
    X(161, eCantCreateCaptureBuffer) \
    X(162, eWrongAudioEnginePointer) \
    X(163, eWrongAudioFileObject) \
    X(164, eCantGetFrame) \
    X(165, eSurfaceLost) \
    X(166, eCantRenderTringles) \
    X(167, eCantCreateFileWriter) \
    X(168, eCantOpenFileForWriting) \
    X(169, eCantCreateBuffer) \
    X(170, eCantWriteFrameToFile) \
    X(171, eResolutionTooBig) \
    X(172, eCantSetFileFormat) \
    X(173, eFailedToCreateBuffer) \
    X(174, eEmptyBuffer) \
    X(175, eEmptyTextureHolder) \
    X(176, eRenderingToSlow) \
    X(177, eNoGPUAdapters) \
    X(178, eUpdateSurfaceError) \
    X(179, eStretchRectError) \
    X(180, eCopyBufferError) \
    X(181, eDeviceLosterror) \
    X(182, eCantLockIndexBuffer) \
    X(183, eCantLockVertexBuffer) \
    X(184, eCantConvertFVFToDeclarator) \
    X(185, eWrongRenderFXParameterHandle) \
    X(186, eCantCreateRenderEffect) \
    X(187, eWrongRenderEffectPointer) \
    X(188, eCantSetVertexDeclaration) \
    X(189, eCantCreateVertexDeclaration) \
    X(190, eWrongVertexDeclarationPointer) \
    X(191, eWrongSkinnedMeshPointer) \
    X(192, eWrongSkinnedMeshCameraPointer) \
    X(193, eCantFindPreviewWnd) \
    X(194, eToManyOverlays) \
    X(195, ePreviewGenFailed) \
    X(196, ePreviewGenSkipped) \
    X(197, eOutOfRange) \
    X(198, eNoItems) \
    X(199, eNotSupported) \
    X(200, eNotInitialized) \
    X(201, eFailedToLoadTexture) \
    X(202, eFailedToCreateTexture) \
    X(203, eFailedToGetThumbnail) \
    X(204, eCannotOpenFile) \
    X(205, eCannotCreateDirectory) \
    X(206, eFileAlreadyUsedByAnotherProcess) \
    X(207, eNoFileName) \
    X(208, eNoLayers) \
    X(209, eDiffuseTextureNotFound) \
    X(210, eUVMapTextureNotFound) \
    X(211, eMaterialsTextureNotFound) \
    X(212, eInvalidMeshVersion) \
    X(213, eScene3DImportError) \
    X(214, eScene3DCorrupted) \
    X(215, eScene3DImportNoMeshesError) \
    X(216, eEmptyObject) \
    X(217, eEmptyParameter) \
    X(218, eCannotReadBuffer) \
    X(219, eEmptyNode) \
    X(220, eEnvMapAlreadyLoaded) \
    X(221, eEnvMapInProgress) \
    X(222, eSkyBoxAlreadyLoaded) \
    X(223, eFailedToSetEnvMap) \
    X(224, eNodeRejected) \
    X(225, eInvalidInputLayout) \
    X(226, eNoSVPosition) \
    X(227, eFailedToChangeMaterial) \
    X(228, eFailedToRestoreMaterial) \
    X(229, eMaterialChangeNotSupported) \
    X(230, eSceneExpired) \
    X(231, eIncompatibleEffectType) \
    X(232, eMaterialNotFound) \
    X(233, eMaterialNotLinked) \
    X(234, eSameMaterialLinked) \
    X(235, eCannotCreateEffect) \
    X(236, eEffectDisabled) \
    X(237, eMaterialsFileNotFound) \
    X(238, eFailedToCreateSelection) \
    X(239, eFailedToCreateVertexBuffer) \
    X(240, eFailedToCreateIndexBuffer) \
    X(241, eFailedToCreateInputVertexBuffer) \
    X(242, eNoMaterialId) \
    X(243, eUnsupportedMaterialType) \
    X(244, eFailedToConnect) \
    X(245, eNotConnected)
// clang-format on

namespace fx {

enum _eError : std::uint32_t {
#define TARNEX_ENUMERATOR(code, name) name = (code),
    TARNEX_FX_ERRORS(TARNEX_ENUMERATOR)
#undef TARNEX_ENUMERATOR
};

// Carries an effect error out of a plug-in or the engine core. Thrown by value, caught by
// reference; the global effect factory reports the code and returns it. Has no base on purpose.
class Exception {
public:
    explicit Exception(_eError error) : code(error) {}

    _eError code;
};

}  // namespace fx
