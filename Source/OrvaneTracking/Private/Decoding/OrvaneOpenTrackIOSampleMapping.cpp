// Copyright Orvane. All Rights Reserved.

#include "Decoding/OrvaneOpenTrackIOSampleMapping.h"

#include "Containers/ContainerAllocationPolicies.h"
#include "Decoding/OrvanePayloadTree.h"
#include "Decoding/OrvaneTrackingSample.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "Math/UnrealMathUtility.h"

#include <cfloat>

namespace UE::OrvaneTracking::OpenTrackIO::Private
{
	namespace
	{
		constexpr double MaxUInt32 = 4294967295.0;
		constexpr double MaxInt32 = 2147483647.0;
		constexpr double MaxUInt48 = 281474976710655.0;
		constexpr double CentimetresPerMetre = 100.0;

		/** The protocol name and major version this decoder understands. */
		constexpr const TCHAR* ProtocolName = TEXT("OpenTrackIO");
		constexpr double SupportedMajorVersion = 1.0;

		/** Reads the engine's JSON tree. */
		class FJsonTreeAccess
		{
		public:
			using FValue = const FJsonValue*;

			FValue FindMember(FValue Object, const char* Name) const
			{
				// The tree owns the member; the shared pointer returned here only adds a reference for the call.
				return Object->AsObject()->TryGetField(FAnsiStringView(Name)).Get();
			}

			EPayloadValueType GetType(FValue Value) const
			{
				switch (Value->Type)
				{
					case EJson::Boolean:
						return EPayloadValueType::Boolean;
					case EJson::Number:
						return EPayloadValueType::Number;
					case EJson::String:
						return EPayloadValueType::String;
					case EJson::Array:
						return EPayloadValueType::Array;
					case EJson::Object:
						return Value->AsObject().IsValid() ? EPayloadValueType::Object : EPayloadValueType::Null;
					default:
						return EPayloadValueType::Null;
				}
			}

			double GetNumber(FValue Value) const { return Value->AsNumber(); }
			bool GetBool(FValue Value) const { return Value->AsBool(); }
			FString GetString(FValue Value) const { return Value->AsString(); }
			int32 Num(FValue Array) const { return Array->AsArray().Num(); }

			/** Calls Visit on each item of an array, in order, until it returns false. */
			template <typename VisitorType>
			void ForEachItem(FValue Array, VisitorType&& Visit) const
			{
				for (const TSharedPtr<FJsonValue>& Item : Array->AsArray())
				{
					if (!Visit(Item.Get()))
					{
						return;
					}
				}
			}
		};

		/** Reads the flat tree a CBOR payload was decoded into. */
		class FPayloadTreeAccess
		{
		public:
			using FValue = const FPayloadNode*;

			explicit FPayloadTreeAccess(const FPayloadTree& InTree)
				: Tree(InTree)
			{
			}

			FValue FindMember(FValue Object, const char* Name) const { return Tree.FindMember(*Object, Name); }
			EPayloadValueType GetType(FValue Value) const { return Value->Type; }
			double GetNumber(FValue Value) const { return Value->Number; }
			bool GetBool(FValue Value) const { return Value->bBoolean; }

			FString GetString(FValue Value) const
			{
				const TArrayView<const char> Text = Tree.GetText(*Value);
				return Text.Num() > 0 ? FString(Text.Num(), reinterpret_cast<const UTF8CHAR*>(Text.GetData()))
									  : FString();
			}

			int32 Num(FValue Array) const { return Array->NumChildren; }

			template <typename VisitorType>
			void ForEachItem(FValue Array, VisitorType&& Visit) const
			{
				for (int32 Index = Array->FirstChild; Index != INDEX_NONE; Index = Tree.GetNode(Index).NextSibling)
				{
					if (!Visit(&Tree.GetNode(Index)))
					{
						return;
					}
				}
			}

		private:
			const FPayloadTree& Tree;
		};

		/**
		 * Reads typed fields out of a parsed sample and remembers whether any field that was present had the
		 * wrong type or an out-of-range value. A field holding null counts as absent.
		 */
		template <typename AccessType>
		class TFieldReader
		{
		public:
			using FValue = typename AccessType::FValue;

			explicit TFieldReader(const AccessType& InAccess)
				: Access(InAccess)
			{
			}

			const AccessType& GetAccess() const { return Access; }
			bool IsMalformed() const { return bMalformed; }

			/** Marks the sample as malformed for a reason found outside the reader. */
			void MarkMalformed() { bMalformed = true; }

			/** The object member, or null when absent (or not an object, which marks the sample malformed). */
			FValue GetObject(FValue Parent, const char* Name) { return Find(Parent, Name, EPayloadValueType::Object); }

			FValue GetArray(FValue Parent, const char* Name) { return Find(Parent, Name, EPayloadValueType::Array); }

			/** A finite number within [Min, Max]. */
			TOptional<double> GetNumber(FValue Parent, const char* Name, double Min = -DBL_MAX, double Max = DBL_MAX)
			{
				const FValue Value = Find(Parent, Name, EPayloadValueType::Number);
				if (!Value)
				{
					return {};
				}
				return CheckNumber(Access.GetNumber(Value), Min, Max);
			}

			/** A finite number strictly above zero. */
			TOptional<double> GetPositiveNumber(FValue Parent, const char* Name)
			{
				TOptional<double> Number = GetNumber(Parent, Name);
				if (Number && *Number <= 0.0)
				{
					bMalformed = true;
					return {};
				}
				return Number;
			}

			/** A whole number within [Min, Max]. */
			TOptional<uint64> GetInteger(FValue Parent, const char* Name, double Min, double Max)
			{
				TOptional<double> Number = GetNumber(Parent, Name, Min, Max);
				if (!Number)
				{
					return {};
				}
				if (FMath::FloorToDouble(*Number) != *Number)
				{
					bMalformed = true;
					return {};
				}
				return uint64(*Number);
			}

			TOptional<bool> GetBool(FValue Parent, const char* Name)
			{
				const FValue Value = Find(Parent, Name, EPayloadValueType::Boolean);
				return Value ? TOptional<bool>(Access.GetBool(Value)) : TOptional<bool>();
			}

			/** Sets OutString when the member is a string; leaves it alone otherwise. */
			void GetString(FValue Parent, const char* Name, FString& OutString)
			{
				if (const FValue Value = Find(Parent, Name, EPayloadValueType::String))
				{
					OutString = Access.GetString(Value);
				}
			}

			/** A {num, denom} object: numerator 1..2^31-1, denominator 1..2^32-1, both required. */
			TOptional<FOrvaneTrackingRational> GetRational(FValue Parent, const char* Name)
			{
				const FValue Object = GetObject(Parent, Name);
				if (!Object)
				{
					return {};
				}
				const TOptional<uint64> Numerator = GetInteger(Object, "num", 1.0, MaxInt32);
				const TOptional<uint64> Denominator = GetInteger(Object, "denom", 1.0, MaxUInt32);
				if (!Numerator || !Denominator)
				{
					bMalformed = true;
					return {};
				}
				return FOrvaneTrackingRational{uint32(*Numerator), uint32(*Denominator)};
			}

			/** A number converted to float; values a float cannot hold are malformed. */
			TOptional<float> ToFloat(const TOptional<double>& Number)
			{
				if (!Number)
				{
					return {};
				}
				if (FMath::Abs(*Number) > double(FLT_MAX))
				{
					bMalformed = true;
					return {};
				}
				return float(*Number);
			}

		private:
			FValue Find(FValue Parent, const char* Name, EPayloadValueType Type)
			{
				const FValue Value = Access.FindMember(Parent, Name);
				if (!Value)
				{
					return nullptr;
				}
				const EPayloadValueType ValueType = Access.GetType(Value);
				if (ValueType == EPayloadValueType::Null)
				{
					return nullptr;
				}
				if (ValueType != Type)
				{
					bMalformed = true;
					return nullptr;
				}
				return Value;
			}

			TOptional<double> CheckNumber(double Number, double Min, double Max)
			{
				if (!FMath::IsFinite(Number) || Number < Min || Number > Max)
				{
					bMalformed = true;
					return {};
				}
				return Number;
			}

			const AccessType& Access;
			bool bMalformed = false;
		};

		/**
		 * A sample without a protocol block is accepted: the protocol makes every field optional. One that
		 * names a protocol must name ours with major version 1; later minor and patch versions only add fields.
		 */
		template <typename ReaderType>
		TOptional<EOrvaneDatagramRejection> CheckProtocol(ReaderType& Reader, typename ReaderType::FValue Root)
		{
			using FValue = typename ReaderType::FValue;
			const FValue Protocol = Reader.GetObject(Root, "protocol");
			if (!Protocol)
			{
				if (Reader.IsMalformed())
				{
					return EOrvaneDatagramRejection::MalformedPayload;
				}
				return {};
			}
			FString Name;
			Reader.GetString(Protocol, "name", Name);
			const FValue Version = Reader.GetArray(Protocol, "version");
			if (Reader.IsMalformed() || Name.IsEmpty() || !Version || Reader.GetAccess().Num(Version) != 3)
			{
				return EOrvaneDatagramRejection::MalformedPayload;
			}
			TOptional<double> Major;
			Reader.GetAccess().ForEachItem(Version,
				[&Reader, &Major](FValue Item)
				{
					if (Item && Reader.GetAccess().GetType(Item) == EPayloadValueType::Number)
					{
						Major = Reader.GetAccess().GetNumber(Item);
					}
					return false;
				});
			if (!Major)
			{
				return EOrvaneDatagramRejection::MalformedPayload;
			}
			if (Name != ProtocolName || *Major != SupportedMajorVersion)
			{
				return EOrvaneDatagramRejection::UnsupportedVersion;
			}
			return {};
		}

		template <typename ReaderType>
		void ReadIdentity(ReaderType& Reader, typename ReaderType::FValue Root, FOrvaneTrackingSample& Sample)
		{
			if (const TOptional<uint64> SourceNumber = Reader.GetInteger(Root, "sourceNumber", 0.0, MaxUInt32))
			{
				Sample.SourceNumber = uint32(*SourceNumber);
			}
			Reader.GetString(Root, "sourceId", Sample.SourceId);
			Reader.GetString(Root, "sampleId", Sample.SampleId);
		}

		template <typename ReaderType>
		TOptional<FOrvaneTrackingTimecode> ReadTimecode(ReaderType& Reader, typename ReaderType::FValue Timing)
		{
			const typename ReaderType::FValue Timecode = Reader.GetObject(Timing, "timecode");
			if (!Timecode)
			{
				return {};
			}
			const TOptional<uint64> Hours = Reader.GetInteger(Timecode, "hours", 0.0, 23.0);
			const TOptional<uint64> Minutes = Reader.GetInteger(Timecode, "minutes", 0.0, 59.0);
			const TOptional<uint64> Seconds = Reader.GetInteger(Timecode, "seconds", 0.0, 59.0);
			const TOptional<uint64> Frames = Reader.GetInteger(Timecode, "frames", 0.0, 119.0);
			const TOptional<FOrvaneTrackingRational> Rate = Reader.GetRational(Timecode, "frameRate");
			const TOptional<uint64> Subframe = Reader.GetInteger(Timecode, "subFrame", 0.0, MaxUInt32);
			const TOptional<bool> bDropFrame = Reader.GetBool(Timecode, "dropFrame");
			// A timecode without its fields or its rate cannot be placed in time, so it is not a timecode.
			if (!Hours || !Minutes || !Seconds || !Frames || !Rate)
			{
				Reader.MarkMalformed();
				return {};
			}

			FOrvaneTrackingTimecode Result;
			Result.Hours = int32(*Hours);
			Result.Minutes = int32(*Minutes);
			Result.Seconds = int32(*Seconds);
			Result.Frames = int32(*Frames);
			Result.Subframe = Subframe ? uint32(*Subframe) : 0;
			Result.bDropFrame = bDropFrame ? *bDropFrame : false;
			Result.Rate = *Rate;
			return Result;
		}

		template <typename ReaderType>
		void ReadTiming(ReaderType& Reader, typename ReaderType::FValue Root, FOrvaneTrackingSample& Sample)
		{
			using FValue = typename ReaderType::FValue;
			const FValue Timing = Reader.GetObject(Root, "timing");
			if (!Timing)
			{
				return;
			}
			Sample.SampleRate = Reader.GetRational(Timing, "sampleRate");
			if (const TOptional<uint64> Sequence = Reader.GetInteger(Timing, "sequenceNumber", 0.0, MaxUInt32))
			{
				Sample.SampleSequenceNumber = uint32(*Sequence);
			}
			Sample.Timecode = ReadTimecode(Reader, Timing);
			if (const FValue Timestamp = Reader.GetObject(Timing, "sampleTimestamp"))
			{
				const TOptional<uint64> Seconds = Reader.GetInteger(Timestamp, "seconds", 0.0, MaxUInt48);
				const TOptional<uint64> Nanoseconds = Reader.GetInteger(Timestamp, "nanoseconds", 0.0, MaxUInt32);
				if (!Seconds || !Nanoseconds)
				{
					Reader.MarkMalformed();
					return;
				}
				Sample.SampleTimestamp = FOrvaneTrackingTimestamp{*Seconds, uint32(*Nanoseconds)};
			}
		}

		/** Reads x, y and z of a vector object; a missing component takes the default. */
		template <typename ReaderType>
		FVector ReadAxes(ReaderType& Reader, typename ReaderType::FValue Object, double Default)
		{
			const TOptional<double> X = Reader.GetNumber(Object, "x");
			const TOptional<double> Y = Reader.GetNumber(Object, "y");
			const TOptional<double> Z = Reader.GetNumber(Object, "z");
			return FVector(X ? *X : Default, Y ? *Y : Default, Z ? *Z : Default);
		}

		/**
		 * One transform of the list in the engine's frame. OpenTrackIO is right-handed with Y forward, X right
		 * and Z up; the engine is left-handed with X forward, Y right and Z up, so X and Y swap. Both agree that
		 * positive tilt looks up and positive roll turns clockwise seen from behind, but positive pan turns
		 * counter-clockwise seen from above where positive yaw turns clockwise, so pan changes sign.
		 */
		template <typename ReaderType>
		TOptional<FTransform> ReadTransform(ReaderType& Reader, typename ReaderType::FValue Item)
		{
			using FValue = typename ReaderType::FValue;
			if (!Item || Reader.GetAccess().GetType(Item) != EPayloadValueType::Object)
			{
				Reader.MarkMalformed();
				return {};
			}
			const FValue Translation = Reader.GetObject(Item, "translation");
			const FValue Rotation = Reader.GetObject(Item, "rotation");
			if (!Translation || !Rotation)
			{
				Reader.MarkMalformed();
				return {};
			}

			const FVector Metres = ReadAxes(Reader, Translation, 0.0);
			const TOptional<double> Pan = Reader.GetNumber(Rotation, "pan");
			const TOptional<double> Tilt = Reader.GetNumber(Rotation, "tilt");
			const TOptional<double> Roll = Reader.GetNumber(Rotation, "roll");
			FVector Scale = FVector::OneVector;
			if (const FValue ScaleObject = Reader.GetObject(Item, "scale"))
			{
				Scale = ReadAxes(Reader, ScaleObject, 1.0);
			}

			const FVector Location = FVector(Metres.Y, Metres.X, Metres.Z) * CentimetresPerMetre;
			const FRotator Rotator(Tilt ? *Tilt : 0.0, Pan ? -*Pan : 0.0, Roll ? *Roll : 0.0);
			return FTransform(Rotator, Location, FVector(Scale.Y, Scale.X, Scale.Z));
		}

		/**
		 * The list runs from the stage outward: each transform is relative to the one before it, and the
		 * last gives the camera. In the engine a child's world transform is Child * Parent. The product is
		 * taken from the camera outward, (Camera * Parent) * Grandparent and so on, because then the camera's
		 * position is exactly where each parent in turn carries it, even under non-uniform scale.
		 */
		template <typename ReaderType>
		void ReadTransforms(ReaderType& Reader, typename ReaderType::FValue Root, FOrvaneTrackingSample& Sample)
		{
			using FValue = typename ReaderType::FValue;
			const FValue Transforms = Reader.GetArray(Root, "transforms");
			if (!Transforms)
			{
				return;
			}
			if (Reader.GetAccess().Num(Transforms) == 0)
			{
				Reader.MarkMalformed();
				return;
			}
			TArray<FTransform, TInlineAllocator<4>> Chain;
			bool bAllRead = true;
			Reader.GetAccess().ForEachItem(Transforms,
				[&Reader, &Chain, &bAllRead](FValue Item)
				{
					const TOptional<FTransform> Relative = ReadTransform(Reader, Item);
					if (!Relative)
					{
						bAllRead = false;
						return false;
					}
					Chain.Add(*Relative);
					return true;
				});
			if (!bAllRead)
			{
				return;
			}
			FTransform World = Chain.Last();
			for (int32 Index = Chain.Num() - 2; Index >= 0; --Index)
			{
				World = World * Chain[Index];
			}
			Sample.Transform = World;
			Sample.bHasTransform = true;
		}

		template <typename ReaderType>
		void ReadLens(ReaderType& Reader, typename ReaderType::FValue Root, FOrvaneTrackingSample& Sample)
		{
			using FValue = typename ReaderType::FValue;
			const FValue Lens = Reader.GetObject(Root, "lens");
			if (!Lens)
			{
				return;
			}
			Sample.FocalLength = Reader.ToFloat(Reader.GetPositiveNumber(Lens, "pinholeFocalLength"));
			Sample.Aperture = Reader.ToFloat(Reader.GetPositiveNumber(Lens, "fStop"));
			if (const TOptional<double> FocusMetres = Reader.GetPositiveNumber(Lens, "focusDistance"))
			{
				Sample.FocusDistance = Reader.ToFloat(*FocusMetres * CentimetresPerMetre);
			}
			if (const TOptional<double> PupilMetres = Reader.GetNumber(Lens, "entrancePupilOffset"))
			{
				Sample.EntrancePupilOffset = Reader.ToFloat(*PupilMetres * CentimetresPerMetre);
			}
			if (const FValue Encoders = Reader.GetObject(Lens, "encoders"))
			{
				Sample.NormalizedFocus = Reader.ToFloat(Reader.GetNumber(Encoders, "focus", 0.0, 1.0));
				Sample.NormalizedIris = Reader.ToFloat(Reader.GetNumber(Encoders, "iris", 0.0, 1.0));
				Sample.NormalizedZoom = Reader.ToFloat(Reader.GetNumber(Encoders, "zoom", 0.0, 1.0));
			}
			if (const FValue RawEncoders = Reader.GetObject(Lens, "rawEncoders"))
			{
				if (const TOptional<uint64> Focus = Reader.GetInteger(RawEncoders, "focus", 0.0, MaxUInt32))
				{
					Sample.RawFocusEncoder = uint32(*Focus);
				}
				if (const TOptional<uint64> Iris = Reader.GetInteger(RawEncoders, "iris", 0.0, MaxUInt32))
				{
					Sample.RawIrisEncoder = uint32(*Iris);
				}
				if (const TOptional<uint64> Zoom = Reader.GetInteger(RawEncoders, "zoom", 0.0, MaxUInt32))
				{
					Sample.RawZoomEncoder = uint32(*Zoom);
				}
			}
		}

		/**
		 * The tracked pose is the camera's, but a virtual camera must sit at the lens's entrance pupil, its
		 * centre of perspective, for parallax to match the lens. The offset runs along the optical axis,
		 * positive toward the subject, which is the camera's local forward (+X) axis. It is a physical
		 * distance, so any scale in the transform chain does not stretch it.
		 */
		void ApplyEntrancePupil(FOrvaneTrackingSample& Sample)
		{
			if (Sample.bHasTransform && Sample.EntrancePupilOffset)
			{
				const FVector Offset =
					Sample.Transform.GetRotation().RotateVector(FVector(*Sample.EntrancePupilOffset, 0.0, 0.0));
				Sample.Transform.SetTranslation(Sample.Transform.GetTranslation() + Offset);
			}
		}

		template <typename ReaderType>
		void ReadStatic(ReaderType& Reader, typename ReaderType::FValue Root, FOrvaneTrackingSample& Sample)
		{
			using FValue = typename ReaderType::FValue;
			const FValue Static = Reader.GetObject(Root, "static");
			if (!Static)
			{
				return;
			}
			Sample.bHasStatic = true;
			if (const FValue Camera = Reader.GetObject(Static, "camera"))
			{
				if (const FValue Sensor = Reader.GetObject(Camera, "activeSensorPhysicalDimensions"))
				{
					Sample.FilmbackWidth = Reader.ToFloat(Reader.GetNumber(Sensor, "width", 0.0, DBL_MAX));
					Sample.FilmbackHeight = Reader.ToFloat(Reader.GetNumber(Sensor, "height", 0.0, DBL_MAX));
				}
				Sample.CaptureFrameRate = Reader.GetRational(Camera, "captureFrameRate");
				Reader.GetString(Camera, "make", Sample.CameraMake);
				Reader.GetString(Camera, "model", Sample.CameraModel);
				Reader.GetString(Camera, "label", Sample.CameraLabel);
				Reader.GetString(Camera, "serialNumber", Sample.CameraSerialNumber);
			}
			if (const FValue Lens = Reader.GetObject(Static, "lens"))
			{
				Reader.GetString(Lens, "make", Sample.LensMake);
				Reader.GetString(Lens, "model", Sample.LensModel);
			}
		}

		template <typename ReaderType>
		void ReadTracker(ReaderType& Reader, typename ReaderType::FValue Root, FOrvaneTrackingSample& Sample)
		{
			if (const typename ReaderType::FValue Tracker = Reader.GetObject(Root, "tracker"))
			{
				Reader.GetString(Tracker, "status", Sample.TrackerStatus);
			}
		}

		template <typename AccessType>
		TOptional<EOrvaneDatagramRejection> MapSampleWith(
			const AccessType& Access, typename AccessType::FValue Root, FOrvaneTrackingSample& OutSample)
		{
			if (!Root || Access.GetType(Root) != EPayloadValueType::Object)
			{
				return EOrvaneDatagramRejection::MalformedPayload;
			}
			TFieldReader<AccessType> Reader(Access);
			if (TOptional<EOrvaneDatagramRejection> Rejection = CheckProtocol(Reader, Root))
			{
				return Rejection;
			}

			FOrvaneTrackingSample Sample;
			Sample.Protocol = EOrvaneTrackingProtocol::OpenTrackIO;
			ReadIdentity(Reader, Root, Sample);
			ReadTiming(Reader, Root, Sample);
			ReadTransforms(Reader, Root, Sample);
			ReadLens(Reader, Root, Sample);
			ApplyEntrancePupil(Sample);
			ReadStatic(Reader, Root, Sample);
			ReadTracker(Reader, Root, Sample);

			// Huge but finite inputs can still overflow once scaled and composed.
			if (Reader.IsMalformed() || (Sample.bHasTransform && Sample.Transform.ContainsNaN()))
			{
				return EOrvaneDatagramRejection::MalformedPayload;
			}
			OutSample = MoveTemp(Sample);
			return {};
		}
	} // namespace

	TOptional<EOrvaneDatagramRejection> MapSample(const FJsonValue& Root, FOrvaneTrackingSample& OutSample)
	{
		return MapSampleWith(FJsonTreeAccess(), &Root, OutSample);
	}

	TOptional<EOrvaneDatagramRejection> MapSample(const FPayloadTree& Tree, FOrvaneTrackingSample& OutSample)
	{
		return MapSampleWith(FPayloadTreeAccess(Tree), &Tree.GetRoot(), OutSample);
	}
} // namespace UE::OrvaneTracking::OpenTrackIO::Private
