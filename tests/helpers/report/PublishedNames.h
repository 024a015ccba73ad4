#pragma once

// The names of all codes as people and tools find them in logs, by code. Written down a second time
// on purpose: a name that changes in the enumeration's own table breaks whoever searches for it.

namespace published {

// clang-format off
constexpr const char* kManagerNames[] = {
    "eSuccess", "eNotImplemented", "eErrorCreatingFxFactory", "eCouldNotRegisterNewComposition",
    "eErrorCreatingEffect", "eWrongFXName", "eVorelExceptionCatched", "eTarnexLockedByOtherProcess",
    "eNonInterfaceException", "eGenericException", "eGenericError",
};

constexpr const char* kPropertyNames[] = {
    "eSuccess", "eWrongPropertyType", "eCantSetProperty", "eCantGetProperty", "ePropertyNotFound",
    "ePropertyNoAccessForReading", "ePropertyNoAccessForWriting", "ePropertyMinMaxNotSpecified",
    "ePropertyDefaultValNotSpecified", "eInvalidObject", "eThisObjectDoesNotHandleProperties",
    "eNotImplemented", "eGenericException", "eGenericError", "eNonInterfaceException",
    "ePointerCastFailure", "eOutOfRange", "eErrorUpdatingFixedFilter", "eFilterNotFound",
    "eCannotGetCloneInfo", "eCannotCloneEffect",
};

constexpr const char* kEffectNames[] = {
    "eSuccess", "eNotValid", "eNotImplemented", "eInvalidParams", "eDeviceNotSet",
    "eDeviceIsInCaptureMode", "eSkipRenderFrame", "eNoFiltersConnected", "eInvalidFxFactoryObject",
    "eWrongFXIdx", "eGenericException", "eGenericError", "eCouldNotCreateFX", "eCantCloneFX",
    "eEmptyConfig", "eUnsupportedFileType", "eUnknownFileType", "eUnexpectedNode", "eCorruptedFile",
    "eCorruptedNode", "eEmptyFile", "eFailedToOpenFile", "eFilterNotFound", "eNewerVersionOfFile",
    "eNewerVersionOfNode", "eUnsupportedVersion", "eUnsupportedParametersVersion",
    "eCorruptedSourcesNodeVersion", "eUnsupportedFileEncoding", "eIncorrectFileType",
    "eWrongFileFormat", "eProtectedFile", "eNoWriteAccess", "eNoEnoughSpace", "eEmptyEffect",
    "eEmptyScene", "eSaveSceneTimeout", "eSameIndex", "eSameMode", "eNoHistory",
    "eNoWatermarkResource", "eNodeNotFound", "eFailedToSaveDocument", "eFailedToSaveNode",
    "eFailedToSaveMaterial", "eFailedToRemoveNode", "eFailedToReplaceNode", "eOptimizationFailed",
    "eOptimizationTimeout", "eTimeout", "eItemNotFound", "eInvalidEditMode", "eCantLockTexture",
    "eWrongEngine3DPointer", "eCouldNotCreateRenderElem", "eWrongDirect3DPointer",
    "eCantCreateVertexBuffer", "eWrongLocalVertexBufferPointer", "eCantGetLockDesc",
    "eWrongRendererPointer", "eWrongFilesManagerPointer", "eWrongSurfaceAllocatorPointer",
    "eFileNotFound", "eOBJNotFound", "eFileFormatNotSupported", "eFileOpenError",
    "eWrongFilePointer", "eCantGetNoFileStreams", "eCantGetFileStreamInfo",
    "eFileHasNotVideoStream", "eCantGetFileStream", "eCantSupportSelectedTextureFormat",
    "eCantCreateSurface", "eWrongTexturePointer", "eCantCreateCachedReader",
    "eWrongTextGeneratorPointer", "eCantGenerate3DObject", "eCantCreateIndexBuffer",
    "eSurfaceTooBig", "eCantCreateZBuffer", "eCantAddAttachedSurface", "eWrongSurfaceBPP",
    "eWrongSurfaceFormat", "eWrongExternalSurfaceMemoryLocation", "eCantCreatePixelFormat",
    "eCantSetExternalCreateSurfaceDesc", "eNotSupportedFormat", "eWrongDirect3DDevicePointer",
    "eCantSetTransformMatrix", "eCantSetTexture", "eCantSetTextureStageState",
    "eCantSetRenderState", "eCantCreateStateObject", "eCantSetRasterizerState",
    "eErrD3DXInitialize", "eCantSetTextureStates", "eWrongRTPointer", "eCantGetCurrentRT",
    "eCantGetCurrentViewPort", "eCantSetRT", "eCantClear", "eCantSetMaterial",
    "eMaterialIndexOutOfRange", "eCantSetLight", "eCantEnableLight", "eToManyLights",
    "eCantDisableLight", "eCantFindLightToRemove", "eTransformMatrixLevelOutOfRange",
    "eCantSetTransformation", "eWrongVertexBufferPointer", "eCantDrawVertexBuffer",
    "eWrongIndexBufferPointer", "eCantSetViewPort", "eCantDrawIndexedVertexBuffer",
    "eWrongDirectDrawPointer", "eWrongRenderStateManagerPointer", "eWrongText3DInitialization",
    "eWrongSurfaceHolderPointer", "eFileIsNotBitmap", "eNotPow2CompressedDDSBitmaps",
    "eCantGetDataFromFile", "eWrongBufferFormat", "eWrongIndexBufferSize", "eWrongText3DPointer",
    "eCantCreateMovieTexture", "eWrongBumpMapFormat", "eCantCreateSolidBrush", "eCantGetDC",
    "eCantFillRect", "eWrongRenderElemsDesc", "eCantGetFXDesc", "eCantEndScene", "eCantBeginScene",
    "eCantConnectStreamToMixer", "eWrongStreamPointer", "eCantGetCurrentBufferFromStream",
    "eCantGetCropInformation", "eNoFreeRenderTargets", "eCantRestoreRenderTarget",
    "eCantCreateRenderTarget", "eCantRestoreViewPort", "eWrongNumberOfPreparedTextures",
    "eWrongFXPointer", "eNotEnoughtSourceStreams", "eCantResetTexturesParams", "eWrongElemInDesc",
    "eRTIndexIDOutOfRange", "eWrongFXCallerPointer", "eCantCreateUniHwDriver",
    "eErrDirectInitialize", "eErrDirectUnsupported", "eNoInExtendedMode", "eCantStartRenderer",
    "eEngineLockedByOtherProcess", "eWrongSurfacePointer", "eWrongCropSize", "eErrInExtendedMode",
    "eErrDisplayInitialization", "eBltFastError", "eCantStartVPCapture", "eCantCreateCaptureBuffer",
    "eWrongAudioEnginePointer", "eWrongAudioFileObject", "eCantGetFrame", "eSurfaceLost",
    "eCantRenderTringles", "eCantCreateFileWriter", "eCantOpenFileForWriting", "eCantCreateBuffer",
    "eCantWriteFrameToFile", "eResolutionTooBig", "eCantSetFileFormat", "eFailedToCreateBuffer",
    "eEmptyBuffer", "eEmptyTextureHolder", "eRenderingToSlow", "eNoGPUAdapters",
    "eUpdateSurfaceError", "eStretchRectError", "eCopyBufferError", "eDeviceLosterror",
    "eCantLockIndexBuffer", "eCantLockVertexBuffer", "eCantConvertFVFToDeclarator",
    "eWrongRenderFXParameterHandle", "eCantCreateRenderEffect", "eWrongRenderEffectPointer",
    "eCantSetVertexDeclaration", "eCantCreateVertexDeclaration", "eWrongVertexDeclarationPointer",
    "eWrongSkinnedMeshPointer", "eWrongSkinnedMeshCameraPointer", "eCantFindPreviewWnd",
    "eToManyOverlays", "ePreviewGenFailed", "ePreviewGenSkipped", "eOutOfRange", "eNoItems",
    "eNotSupported", "eNotInitialized", "eFailedToLoadTexture", "eFailedToCreateTexture",
    "eFailedToGetThumbnail", "eCannotOpenFile", "eCannotCreateDirectory",
    "eFileAlreadyUsedByAnotherProcess", "eNoFileName", "eNoLayers", "eDiffuseTextureNotFound",
    "eUVMapTextureNotFound", "eMaterialsTextureNotFound", "eInvalidMeshVersion",
    "eScene3DImportError", "eScene3DCorrupted", "eScene3DImportNoMeshesError", "eEmptyObject",
    "eEmptyParameter", "eCannotReadBuffer", "eEmptyNode", "eEnvMapAlreadyLoaded",
    "eEnvMapInProgress", "eSkyBoxAlreadyLoaded", "eFailedToSetEnvMap", "eNodeRejected",
    "eInvalidInputLayout", "eNoSVPosition", "eFailedToChangeMaterial", "eFailedToRestoreMaterial",
    "eMaterialChangeNotSupported", "eSceneExpired", "eIncompatibleEffectType", "eMaterialNotFound",
    "eMaterialNotLinked", "eSameMaterialLinked", "eCannotCreateEffect", "eEffectDisabled",
    "eMaterialsFileNotFound", "eFailedToCreateSelection", "eFailedToCreateVertexBuffer",
    "eFailedToCreateIndexBuffer", "eFailedToCreateInputVertexBuffer", "eNoMaterialId",
    "eUnsupportedMaterialType", "eFailedToConnect", "eNotConnected",
};
// clang-format on

}  // namespace published
