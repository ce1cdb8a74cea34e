// Public interface of the converter library: C functions and fixed-layout
// records. Strings are UTF-8 and NUL-terminated. Integers are little-endian.
// Every record that the caller fills is zero-filled first and carries its own
// size in its first field.
#pragma once

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
#define VC_STATIC_ASSERT(condition, message) static_assert(condition, message)
extern "C" {
#else
#define VC_STATIC_ASSERT(condition, message) _Static_assert(condition, message)
#endif

// Most audio streams one probed record describes.
#define VC_MAX_AUDIO_STREAMS 99
// Most input records one conversion or preview joins.
#define VC_MAX_MEDIA_ITEMS 255
// Size the caller stores in MediaItem.m_cbsize, OutputParam.m_cbsize and ConvertOutcome.m_cbsize.
#define VC_MEDIA_ITEM_SIZE 11990
#define VC_OUTPUT_PARAM_SIZE 872
#define VC_CONVERT_OUTCOME_SIZE 2072

// Failure codes of the library's functions; 0 is success.
enum VideoConverterError {
  VC_ERROR_INVALID_ARGUMENT = -1,  // a null or empty path, a null record pointer
  VC_ERROR_FILE_NOT_FOUND = -2,    // the file does not exist or cannot be read
  VC_ERROR_UNKNOWN_FORMAT = -3,    // no demuxer recognises the file (empty, text, damaged)
  VC_ERROR_NO_STREAM_INFO = -4,    // the container opened but its streams could not be read
  VC_ERROR_TIMEOUT = -5,           // reading the file took longer than the probe allows
  VC_ERROR_OUT_OF_MEMORY = -6,
  VC_ERROR_BUSY = -7,              // a conversion is still running
  VC_ERROR_TOO_MANY_RECORDS = -8,  // more than VC_MAX_MEDIA_ITEMS records
  VC_ERROR_NO_PREVIEW = -9,        // no preview is running, or it has shown no picture yet
  VC_ERROR_CANNOT_WRITE = -10,     // a file could not be written (a missing folder, a full disk, no right)
};

// One audio stream of a probed file. 56 bytes, no padding.
typedef struct AudioStremInfo {
  char m_audioStreamName[32];  // display name, e.g. "eng AAC 5.1"; cut on a character boundary
  int32_t m_audioSteamId;      // index of the stream in the container
  int32_t m_bAudioStream;      // nonzero when a decoder exists and the stream has samples
  int32_t m_AudioFormat;       // codec id (FFmpeg AVCodecID value)
  int32_t m_SampleRate;        // samples per second
  int32_t m_nChannel;          // channel count
  int32_t m_BitsPerSample;     // bits per sample as stored, or of the decoded samples
} AudioStremInfo;

// Properties of a probed file. Natural alignment without any padding: 7,648 bytes.
typedef struct DECODER_INFO {
  int64_t m_Duration;            // microseconds
  int32_t m_Seekable;            // nonzero if the file can be sought
  int32_t m_Can_Deinterlace;     // nonzero for interlaced video
  int32_t m_bVideoStream;        // greater than 0 if the file has a video stream
  int32_t m_VideoFormat;         // codec id (FFmpeg AVCodecID value)
  int32_t m_Width;               // display width: sample aspect ratio and rotation applied
  int32_t m_Height;              // display height
  int32_t m_CodecWidth;          // coded width
  int32_t m_CodecHeight;         // coded height
  int32_t m_FrameRateNum;        // frame rate numerator
  int32_t m_FrameRateDen;        // frame rate denominator
  int32_t m_defaultAudioStream;  // index into m_AudioStreamInfo of the preferred stream; -1 without audio
  int32_t m_AudioSteamCnt;       // valid entries in m_AudioStreamInfo (0 to 99)
  AudioStremInfo m_AudioStreamInfo[VC_MAX_AUDIO_STREAMS];
  char m_Thumbnail[1024];          // path of the thumbnail picture written, empty when none
  char m_framesPosFileName[1024];  // path of the keyframe index file, empty when none
} DECODER_INFO;

#pragma pack(push, 1)

// Font of a text watermark. 42 bytes, packed.
typedef struct _TextInfo {
  char m_fontname[30];
  int32_t m_fontstyle;
  int32_t m_fontsize;
  uint32_t m_fontcolor;
} _TextInfo;

// Picture or text drawn over the video. 3,142 bytes, packed.
typedef struct _WatermarkInfo {
  char m_imagePath[1024];
  char m_text[2048];
  _TextInfo m_fontinfo;
  int32_t m_transparency;   // 0 (invisible) to 255 (opaque)
  int32_t m_watermarkType;  // 0 none, 1 image, 2 text
  int32_t m_x;
  int32_t m_y;
  int32_t m_w;
  int32_t m_h;
  int32_t m_changed_flag;
} _WatermarkInfo;

// Arguments of one effect. 24 bytes.
typedef struct EffectArgs {
  int32_t arg1;
  int32_t arg2;
  int32_t arg3;
  int32_t arg4;
  int32_t arg5;
  int32_t arg6;
} EffectArgs;

// Video fades, microseconds. 16 bytes, packed.
typedef struct _FadeInfo {
  int64_t m_fadeIn_len;
  int64_t m_fadeOut_len;
} _FadeInfo;

// One input of a conversion or a preview. 11,990 bytes, packed.
typedef struct MediaItem {
  int32_t m_cbsize;         // VC_MEDIA_ITEM_SIZE
  char m_FileName[1024];    // input path
  int32_t m_MediaType;      // 0
  DECODER_INFO m_Info;      // the input's probed record
  int64_t m_MediaStartPos;  // microseconds
  int64_t m_MediaEndPos;    // microseconds
  int32_t m_VideoDisable;   // 0 with video; 1 audio only; 2 without audio settings
  int32_t m_AudioDisable;   // 1 to drop the audio
  int32_t m_RotateAngle;    // degrees
  int32_t m_RotateFlip_X;   // horizontal mirror
  int32_t m_RotateFlip_Y;   // vertical mirror
  int32_t m_cropX;          // crop rectangle in source pixels
  int32_t m_cropY;
  int32_t m_cropW;
  int32_t m_cropH;
  int32_t m_ViewType;  // fit mode: 0 source shape, 1 16:9, 2 4:3
  int32_t m_satruation;
  int32_t m_brightness;
  int32_t m_Contrast;
  int32_t m_audioStreamIndex;  // index into m_Info.m_AudioStreamInfo
  int32_t m_volume;            // 256 is unchanged
  int64_t m_fadeIn_len;        // audio fade-in, microseconds
  int64_t m_fadeOut_len;       // audio fade-out, microseconds
  int32_t m_EffectID[2];       // [0] effect, [1] 3D model
  EffectArgs m_pEffectArgs[2];
  _WatermarkInfo m_watermarkInfo;
  _FadeInfo m_fadeVideoInfo;
  int32_t m_bEnableHwaccel;
} MediaItem;

// Output of one conversion. 872 bytes, packed. Bitrates are in kbit/s.
typedef struct OutputParam {
  int32_t m_cbsize;          // VC_OUTPUT_PARAM_SIZE
  char m_FileName[256];      // output path
  char m_Format[64];         // container format name
  char m_FormatOptions[64];  // empty
  int32_t m_Device;          // target device of the profile
  char m_VideoEncoder[64];   // empty without video
  int32_t m_VideoReserved1;  // 0
  int32_t m_VideoBitrate;
  int32_t m_VideoReserved2;  // 0
  int32_t m_FrameRateDen;
  int32_t m_FrameRateNum;
  int32_t m_Width;
  int32_t m_Height;
  int32_t m_SampleAspectNum;  // 1
  int32_t m_SampleAspectDen;  // 1
  int32_t m_Type;             // 0 video, 1 audio only, 2 without audio settings
  int32_t m_VideoQuality;
  char m_AudioEncoder[64];
  int32_t m_AudioReserved1;  // 0
  int32_t m_AudioBitrate;
  int32_t m_AudioReserved2;  // 0
  int32_t m_SampleRate;
  int32_t m_Channels;
  int32_t m_BitsPerSample;      // 16
  int32_t m_AudioReserved3[2];  // 0
  int32_t m_Reserved596;        // 0
  int32_t m_Reserved600;        // 0
  int64_t m_SegmentLength;      // microseconds per output piece; 0 for one output file
  int32_t m_Reserved612;        // 0
  char m_ReservedText[256];     // empty
} OutputParam;

#pragma pack(pop)

// How the conversion started last has ended: ConvertOutcome.m_Outcome.
enum VideoConverterOutcome {
  VC_OUTCOME_NONE = 0,      // no conversion has been started in this process
  VC_OUTCOME_RUNNING = 1,   // the conversion started last has not ended yet
  VC_OUTCOME_FINISHED = 2,  // every input was converted whole
  // Finished, but an input ended before the part asked of it (a file cut
  // short or damaged, or one that claims to last longer than it does). The
  // output holds what could be decoded, the inputs following one another
  // without a gap; m_Reason says where each such input ends, as "The input
  // ends at 00:00:03 of 00:00:10", with the file's name and a colon in front
  // when several inputs are joined, and "; " between them.
  VC_OUTCOME_WARNING = 3,
  // Nothing was kept, not even the finished pieces of a split output; m_Reason says why.
  VC_OUTCOME_FAILED = 4,
  // Stopped by VideoConverter_Abort or VideoConverter_Destory: what was
  // written is kept under the final names, playable; m_Reason says where it
  // stopped, as "The conversion was stopped at 00:00:05 of 00:00:30".
  VC_OUTCOME_ABORTED = 5,
};

// The outcome of a conversion. Natural alignment without any padding: 2,072 bytes.
typedef struct ConvertOutcome {
  int32_t m_cbsize;     // VC_CONVERT_OUTCOME_SIZE, set by the caller
  int32_t m_Outcome;    // a VideoConverterOutcome
  int64_t m_WrittenUs;  // length of the output kept, microseconds
  // Files kept under their final names: 1, or the pieces of a split output
  // ("<name>_0.<ext>", "<name>_1.<ext>", ...); 0 while running and after a failure.
  int32_t m_FileCount;
  int32_t m_Reserved;      // 0
  char m_Reason[1024];     // see VideoConverterOutcome; empty when finished without a warning
  char m_FirstFile[1024];  // path of the first file kept, the only one unless split; empty when none
} ConvertOutcome;

// Called once by the library when a conversion has ended, on a library thread.
typedef void (*VideoConverter_ConvertEndFunction)(void);
// Called by the renderer after it wrote a dragged rectangle into the record
// with the given index.
typedef void (*VideoConverter_ReadDataFunction)(int recordIndex);

// Sets the folder the library keeps its scratch files in (keyframe indexes,
// intermediate files). The path is copied. Returns 0, or -1 for a null path.
int VideoConverter_SetTempPath(const char* path);

// Probes a file. On success (0) *info points to a record owned by the library,
// valid on the calling thread until its next call, and on failure it is set
// to NULL. The thumbnail is written as
// BMP to thumbnailPath when that is neither NULL nor empty and the file has
// video, and a keyframe index is written under the temporary folder. With
// audioOnly nonzero all video work is skipped. Returns 0 or a VideoConverterError.
// A file that opens but holds neither video nor audio succeeds with no streams.
int VideoConverter_GetMediaInfo(const char* path, const char* thumbnailPath, DECODER_INFO** info, int audioOnly);

// Probes a file into the caller's record and writes the frame at timeUs
// (microseconds, clamped to the duration) as a BMP thumbnail to imagePath.
int VideoConverter_GetMediaInfo2(const char* path, const char* imagePath, DECODER_INFO* info, int64_t timeUs);

// Copies the times of the keyframes a keyframe index lists (the probe's
// m_framesPosFileName), in microseconds from the start of the file and in
// order, into `times`, at most `capacity` of them. Returns how many the index
// holds, which may be more than capacity; VC_ERROR_INVALID_ARGUMENT for a
// null path, or a null buffer with a capacity; VC_ERROR_FILE_NOT_FOUND for
// an index missing or damaged.
int VideoConverter_GetKeyframeTimes(const char* indexPath, int64_t* times, int capacity);

// Answers 1 when this build has an encoder for the codec with the given
// four-character code of QuickTime-style containers (such as "apcn"), else 0.
int VideoConverter_CheckEncoder(const char* fourCharacterCode);
// The readable name of a codec the probe reports by number (m_VideoFormat,
// m_AudioFormat), such as "AAC (Advanced Audio Coding)"; an empty text for a
// number no codec has. The text belongs to the library and never changes.
const char* VideoConverter_GetCodecName(int32_t codecId);

// Starts converting `count` inputs into one output on the library's threads.
// The preview arguments are NULL, 640, 480 and 0. Returns 0 when started.
// Each output file is written under a hidden name in its folder,
// ".<name>.part-<process id>-<n>.<ext>", and renamed to its final name once
// finished, so that a final name never shows a broken file: a process
// killed meanwhile leaves only the hidden one.
int VideoConverter_Convert(MediaItem* items, int count, OutputParam* output, void* previewView, int previewWidth,
                           int previewHeight, int previewFlags);
// Registers the function called once when a conversion has ended, whether it
// finished, failed (the reason also goes to standard error) or was aborted;
// VideoConverter_GetConvertOutcome tells which. It stays registered for later
// conversions. Registered after a conversion that has already ended, it is
// called at once.
int VideoConverter_ConvertEndCallBack(VideoConverter_ConvertEndFunction callback);
// Fills the caller's record, whose m_cbsize is set, with the outcome of the
// conversion started last. It is complete when the end callback is called
// and stays until the next conversion starts. Returns 0, or
// VC_ERROR_INVALID_ARGUMENT for a null record or a wrong size.
int VideoConverter_GetConvertOutcome(ConvertOutcome* outcome);
// Copies the path of the kept file with the given index (0 to m_FileCount - 1)
// into `path`, NUL-terminated. Returns 0, or VC_ERROR_INVALID_ARGUMENT for a
// null buffer, an index out of range or a buffer too small for the path.
int VideoConverter_GetOutputFile(int index, char* path, int pathSize);
// Position reached and total length of the running preview, or else of the
// conversion, microseconds. Once a conversion whose inputs ended early has finished, the
// length is that of the output.
int64_t VideoConverter_GetCurrentTime(void);
int64_t VideoConverter_GetDuration(void);
// Stops the running preview, or else the running conversion, within half a
// second, without waiting for it; what was written stays on disk.
int VideoConverter_Abort(void);
// Releases everything the preview held, or else the last conversion.
int VideoConverter_Destory(void);

// A rectangle in pixels.
typedef struct VideoConverter_Rect {
  int32_t x;
  int32_t y;
  int32_t w;
  int32_t h;
} VideoConverter_Rect;

// One picture for a view. The pixels are 4 bytes each in memory order blue,
// green, red, 255 (0xffRRGGBB read as a 32-bit integer on this machine) and
// are valid only during the call.
typedef struct VideoConverter_Frame {
  const uint8_t* pixels;
  int32_t width;
  int32_t height;
  int32_t bytesPerRow;
  int32_t recordIndex;  // the record the picture comes from
  int64_t timeUs;       // position on the preview's timeline
  // 1 when the picture is the record's source, upright and untouched (the
  // first view of a two-view preview); 0 when it is the record's result.
  int32_t isSource;
  // The source picture's size; the two rectangles below are in its pixels.
  int32_t sourceWidth;
  int32_t sourceHeight;
  // Where the source picture lies in this frame, for a source picture.
  VideoConverter_Rect picture;
  VideoConverter_Rect crop;       // the crop rectangle shown
  VideoConverter_Rect watermark;  // the record's watermark area; w and h are 0 without one
} VideoConverter_Frame;

// What a view hands the renderer: the "view" pointers of VideoConverter_Render
// point at one of these. Every function is called on a library thread.
typedef struct VideoConverter_RenderView {
  void* context;
  // A new picture; pictures that would come late are dropped, never queued.
  void (*showFrame)(void* context, const VideoConverter_Frame* frame);
  // The preview's sound (first view only; may be NULL): interleaved signed
  // 16-bit stereo at VC_PREVIEW_SAMPLE_RATE. Returns the number of sample
  // frames taken, fewer when its buffer is full, or -1 without a sound device.
  int (*playSound)(void* context, const int16_t* samples, int frameCount);
  // Microseconds of sound heard since the last flush, -1 without a sound
  // device. The pictures follow this clock while there is sound.
  int64_t (*soundPlayedUs)(void* context);
  // Drops the sound not yet heard and counts from 0 again (seek, pause).
  void (*flushSound)(void* context);
} VideoConverter_RenderView;

#define VC_PREVIEW_SAMPLE_RATE 48000

// Starts previewing `count` records (1 to VC_MAX_MEDIA_ITEMS) one after
// another into a view and an optional second view (NULL with size 0), from
// the start, playing. With one view it shows the records' result, with two
// the first view shows the source and the second the result. Pictures are
// scaled to the views' sizes. The renderer reads the records in place while it
// runs: a change shows on the next pictures, or at once while paused. Starting
// stops a preview already running. A record without a file name is an
// invalid argument; a file that cannot be read passes as silence and leaves
// the last picture standing. Returns 0, VC_ERROR_INVALID_ARGUMENT,
// VC_ERROR_TOO_MANY_RECORDS or VC_ERROR_OUT_OF_MEMORY.
int VideoConverter_Render(MediaItem* items, void* view, int viewWidth, int viewHeight, int count, void* effectView,
                          int effectViewWidth, int effectViewHeight);
// Goes to a position of the timeline exactly: the keyframe before it, then
// decoding forward. Playing goes on from there; paused, the picture there is
// shown. Returns at once.
int VideoConverter_RenderSeek(int64_t positionUs);
// One picture forward (steps > 0) or back (steps < 0), paused.
int VideoConverter_RenderStep(int steps);
// The crop rectangle handed to the views, in source pixels.
int VideoConverter_Render_SetCrop(int x, int y, int w, int h);
// A rectangle dragged in a view, in source pixels: written into the record
// being shown (m_cropX ... or the watermark's m_x ...), then the installed
// read function is called with that record's index, on the caller's thread.
int VideoConverter_Render_DragCrop(int x, int y, int w, int h);
int VideoConverter_Render_DragWatermark(int x, int y, int w, int h);
int VideoConverter_Pause(void);
int VideoConverter_Resume(void);
// Returns 0 once playback has reached its end, 1 before, and also 0 when no
// preview runs.
int VideoConverter_IsEnd(void);
// The current result picture, drawn again at the wanted size (*width and
// *height; 0 for the picture's own size), as 4-byte pixels R, G, B, unused in
// rows of width x 4 bytes; the real size comes back. Waits for a seek asked
// for to arrive. The pixels stay valid until the next call.
int VideoConverter_GetCurrentBitmap(uint8_t** pixels, int* width, int* height, int* bytesPerRow, int* bitsPerPixel);
// Writes the current result picture, as the view shows it, to a PNG, JPEG
// or BMP file chosen by the name's ending. Waits for a seek asked for to arrive.
// VC_ERROR_CANNOT_WRITE for another ending or a file that cannot be written.
int VideoConverter_GetCurrentBitmap2(const char* path);
// Saves a picture of 4-byte pixels R, G, B, unused as "png", "jpg" or "bmp"
// (`kind`) to a path. Returns 0, VC_ERROR_INVALID_ARGUMENT or VC_ERROR_CANNOT_WRITE.
int VideoConverter_SavePicture(const uint8_t* pixels, int width, int height, int bytesPerRow, const char* kind,
                               const char* path);
int VideoConverter_SetReadCropDataFunction(VideoConverter_ReadDataFunction function);
int VideoConverter_SetReadWatermarkDataFunction(VideoConverter_ReadDataFunction function);

// Not part of the original interface; added for the downloads.

// A copy of a streaming manifest's streams into one MP4 file, without
// re-encoding. Several may run at once, each on a thread of its own, beside a
// conversion or a preview.
typedef struct VideoConverter_Remux VideoConverter_Remux;
// Called once by the library when a remux has ended, however it ended, on the
// remux's thread, with the context given to VideoConverter_RemuxStart.
typedef void (*VideoConverter_RemuxEndFunction)(void* context);

// Starts copying the video and sound of the HLS playlist or DASH manifest at
// manifestUrl (http, https or a file path) into an MP4 file at outputPath,
// which is written from its start whatever its name's extension. A DASH
// address may end in "#representation=<id>" to take the video of that
// representation; otherwise the best video and sound are taken. userAgent
// may be NULL or empty. *remux receives the handle, to be released with
// VideoConverter_RemuxRelease. Returns 0, or VC_ERROR_INVALID_ARGUMENT for a
// null or empty address or path, a null handle pointer or a null function.
int VideoConverter_RemuxStart(const char* manifestUrl, const char* userAgent, const char* outputPath,
                              VideoConverter_RemuxEndFunction end, void* context, VideoConverter_Remux** remux);
// Length written and length of the whole programme, microseconds; the length
// is 0 while unknown and for a programme without end. Returns 0, or
// VC_ERROR_INVALID_ARGUMENT for a null handle.
int VideoConverter_RemuxGetProgress(VideoConverter_Remux* remux, int64_t* positionUs, int64_t* durationUs);
// Stops the remux soon, also while it waits for the network, without
// waiting for it. What was written stays. Returns 0, or
// VC_ERROR_INVALID_ARGUMENT for a null handle.
int VideoConverter_RemuxAbort(VideoConverter_Remux* remux);
// How the remux stands: VC_OUTCOME_RUNNING, VC_OUTCOME_FINISHED (the whole
// programme was written and the file closed), VC_OUTCOME_FAILED or
// VC_OUTCOME_ABORTED; VC_ERROR_INVALID_ARGUMENT for a null handle. The reason
// of a failure is copied into reason, NUL-terminated and cut to reasonSize,
// when reason is not NULL; it is empty otherwise.
int VideoConverter_RemuxGetOutcome(VideoConverter_Remux* remux, char* reason, int reasonSize);
// Aborts the remux when it still runs, waits for its thread and frees the
// handle. Not to be called from the end function. Returns 0, or
// VC_ERROR_INVALID_ARGUMENT for a null handle.
int VideoConverter_RemuxRelease(VideoConverter_Remux* remux);

#ifdef __cplusplus
}
#endif

VC_STATIC_ASSERT(sizeof(AudioStremInfo) == 56, "AudioStremInfo is 56 bytes");
VC_STATIC_ASSERT(offsetof(AudioStremInfo, m_audioSteamId) == 32, "AudioStremInfo layout");
VC_STATIC_ASSERT(offsetof(AudioStremInfo, m_bAudioStream) == 36, "AudioStremInfo layout");
VC_STATIC_ASSERT(offsetof(AudioStremInfo, m_AudioFormat) == 40, "AudioStremInfo layout");
VC_STATIC_ASSERT(offsetof(AudioStremInfo, m_SampleRate) == 44, "AudioStremInfo layout");
VC_STATIC_ASSERT(offsetof(AudioStremInfo, m_nChannel) == 48, "AudioStremInfo layout");
VC_STATIC_ASSERT(offsetof(AudioStremInfo, m_BitsPerSample) == 52, "AudioStremInfo layout");

VC_STATIC_ASSERT(sizeof(DECODER_INFO) == 7648, "DECODER_INFO is 7,648 bytes");
VC_STATIC_ASSERT(offsetof(DECODER_INFO, m_Seekable) == 8, "DECODER_INFO layout");
VC_STATIC_ASSERT(offsetof(DECODER_INFO, m_Can_Deinterlace) == 12, "DECODER_INFO layout");
VC_STATIC_ASSERT(offsetof(DECODER_INFO, m_bVideoStream) == 16, "DECODER_INFO layout");
VC_STATIC_ASSERT(offsetof(DECODER_INFO, m_VideoFormat) == 20, "DECODER_INFO layout");
VC_STATIC_ASSERT(offsetof(DECODER_INFO, m_Width) == 24, "DECODER_INFO layout");
VC_STATIC_ASSERT(offsetof(DECODER_INFO, m_Height) == 28, "DECODER_INFO layout");
VC_STATIC_ASSERT(offsetof(DECODER_INFO, m_CodecWidth) == 32, "DECODER_INFO layout");
VC_STATIC_ASSERT(offsetof(DECODER_INFO, m_CodecHeight) == 36, "DECODER_INFO layout");
VC_STATIC_ASSERT(offsetof(DECODER_INFO, m_FrameRateNum) == 40, "DECODER_INFO layout");
VC_STATIC_ASSERT(offsetof(DECODER_INFO, m_FrameRateDen) == 44, "DECODER_INFO layout");
VC_STATIC_ASSERT(offsetof(DECODER_INFO, m_defaultAudioStream) == 48, "DECODER_INFO layout");
VC_STATIC_ASSERT(offsetof(DECODER_INFO, m_AudioSteamCnt) == 52, "DECODER_INFO layout");
VC_STATIC_ASSERT(offsetof(DECODER_INFO, m_AudioStreamInfo) == 56, "DECODER_INFO layout");
VC_STATIC_ASSERT(offsetof(DECODER_INFO, m_Thumbnail) == 5600, "DECODER_INFO layout");
VC_STATIC_ASSERT(offsetof(DECODER_INFO, m_framesPosFileName) == 6624, "DECODER_INFO layout");

VC_STATIC_ASSERT(sizeof(_TextInfo) == 42, "_TextInfo is 42 bytes");
VC_STATIC_ASSERT(sizeof(_WatermarkInfo) == 3142, "_WatermarkInfo is 3,142 bytes");
VC_STATIC_ASSERT(sizeof(EffectArgs) == 24, "EffectArgs is 24 bytes");
VC_STATIC_ASSERT(sizeof(_FadeInfo) == 16, "_FadeInfo is 16 bytes");

VC_STATIC_ASSERT(sizeof(MediaItem) == VC_MEDIA_ITEM_SIZE, "MediaItem is 11,990 bytes");
VC_STATIC_ASSERT(offsetof(MediaItem, m_FileName) == 4, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_MediaType) == 1028, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_Info) == 1032, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_MediaStartPos) == 8680, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_MediaEndPos) == 8688, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_VideoDisable) == 8696, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_AudioDisable) == 8700, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_RotateAngle) == 8704, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_RotateFlip_X) == 8708, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_RotateFlip_Y) == 8712, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_cropX) == 8716, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_cropY) == 8720, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_cropW) == 8724, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_cropH) == 8728, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_ViewType) == 8732, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_satruation) == 8736, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_brightness) == 8740, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_Contrast) == 8744, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_audioStreamIndex) == 8748, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_volume) == 8752, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_fadeIn_len) == 8756, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_fadeOut_len) == 8764, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_EffectID) == 8772, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_pEffectArgs) == 8780, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_watermarkInfo) == 8828, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_watermarkInfo.m_text) == 9852, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_watermarkInfo.m_fontinfo) == 11900, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_watermarkInfo.m_transparency) == 11942, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_watermarkInfo.m_watermarkType) == 11946, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_watermarkInfo.m_x) == 11950, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_watermarkInfo.m_y) == 11954, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_watermarkInfo.m_w) == 11958, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_watermarkInfo.m_h) == 11962, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_watermarkInfo.m_changed_flag) == 11966, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_fadeVideoInfo) == 11970, "MediaItem layout");
VC_STATIC_ASSERT(offsetof(MediaItem, m_bEnableHwaccel) == 11986, "MediaItem layout");

VC_STATIC_ASSERT(sizeof(OutputParam) == VC_OUTPUT_PARAM_SIZE, "OutputParam is 872 bytes");
VC_STATIC_ASSERT(offsetof(OutputParam, m_FileName) == 4, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_Format) == 260, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_FormatOptions) == 324, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_Device) == 388, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_VideoEncoder) == 392, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_VideoReserved1) == 456, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_VideoBitrate) == 460, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_VideoReserved2) == 464, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_FrameRateDen) == 468, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_FrameRateNum) == 472, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_Width) == 476, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_Height) == 480, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_SampleAspectNum) == 484, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_SampleAspectDen) == 488, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_Type) == 492, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_VideoQuality) == 496, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_AudioEncoder) == 500, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_AudioReserved1) == 564, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_AudioBitrate) == 568, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_AudioReserved2) == 572, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_SampleRate) == 576, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_Channels) == 580, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_BitsPerSample) == 584, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_AudioReserved3) == 588, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_Reserved596) == 596, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_Reserved600) == 600, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_SegmentLength) == 604, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_Reserved612) == 612, "OutputParam layout");
VC_STATIC_ASSERT(offsetof(OutputParam, m_ReservedText) == 616, "OutputParam layout");

VC_STATIC_ASSERT(sizeof(ConvertOutcome) == VC_CONVERT_OUTCOME_SIZE, "ConvertOutcome is 2,072 bytes");
VC_STATIC_ASSERT(offsetof(ConvertOutcome, m_Outcome) == 4, "ConvertOutcome layout");
VC_STATIC_ASSERT(offsetof(ConvertOutcome, m_WrittenUs) == 8, "ConvertOutcome layout");
VC_STATIC_ASSERT(offsetof(ConvertOutcome, m_FileCount) == 16, "ConvertOutcome layout");
VC_STATIC_ASSERT(offsetof(ConvertOutcome, m_Reserved) == 20, "ConvertOutcome layout");
VC_STATIC_ASSERT(offsetof(ConvertOutcome, m_Reason) == 24, "ConvertOutcome layout");
VC_STATIC_ASSERT(offsetof(ConvertOutcome, m_FirstFile) == 1048, "ConvertOutcome layout");

#undef VC_STATIC_ASSERT
