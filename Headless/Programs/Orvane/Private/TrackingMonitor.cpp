// Copyright Orvane. All Rights Reserved.

#include "TrackingMonitor.h"

#include "Misc/ScopeLock.h"
#include "OrvaneTrackingSource.h"

void FTrackingMonitor::AddSample(const FOrvaneTrackingSample& Sample, double ReceiptSeconds)
{
	const FString Name = FOrvaneTrackingSource::MakeSubjectName(Sample).ToString();
	FScopeLock ScopeLock(&Lock);
	FStream& Stream = Streams.FindOrAdd(Name);
	Stream.Subject.Name = Name;
	if (Stream.LastReceiptSeconds > 0.0)
	{
		const double Interval = ReceiptSeconds - Stream.LastReceiptSeconds;
		++Stream.Intervals;
		const double Delta = Interval - Stream.IntervalMean;
		Stream.IntervalMean += Delta / static_cast<double>(Stream.Intervals);
		Stream.IntervalM2 += Delta * (Interval - Stream.IntervalMean);
	}
	Stream.LastReceiptSeconds = ReceiptSeconds;
	++Stream.PeriodSamples;
	++Stream.Subject.TotalSamples;
	Stream.Subject.Last = Sample;
}

TArray<FTrackingMonitorSubject> FTrackingMonitor::TakeReport(double NowSeconds)
{
	FScopeLock ScopeLock(&Lock);
	const double Period = PeriodStartSeconds < 0.0 ? 0.0 : NowSeconds - PeriodStartSeconds;
	PeriodStartSeconds = NowSeconds;

	TArray<FTrackingMonitorSubject> Report;
	for (TPair<FString, FStream>& Pair : Streams)
	{
		FStream& Stream = Pair.Value;
		Stream.Subject.RateHz = Period > 0.0 ? static_cast<double>(Stream.PeriodSamples) / Period : 0.0;
		Stream.Subject.JitterMs =
			Stream.Intervals > 1 ? FMath::Sqrt(Stream.IntervalM2 / static_cast<double>(Stream.Intervals - 1)) * 1000.0
								 : 0.0;
		Report.Add(Stream.Subject);
		Stream.PeriodSamples = 0;
		Stream.Intervals = 0;
		Stream.IntervalMean = 0.0;
		Stream.IntervalM2 = 0.0;
	}
	Report.Sort(
		[](const FTrackingMonitorSubject& A, const FTrackingMonitorSubject& B)
		{
			return A.Name < B.Name;
		});
	return Report;
}
